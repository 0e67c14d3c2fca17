#include "cli/import_arguments.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cli/format_names.h"
#include "cli/honoured_options.h"
#include "cli/option_values.h"
#include "cli/standard_input.h"
#include "export/formats.h"
#include "files/links.h"
#include "pairing/capture_kind.h"
#include "take/request.h"

namespace cli {
namespace {

// Decides the format from the extensions of the files, or from --as, and sets the request's files.
// Throws UsageError if a file has the wrong extension.
void SetFiles(const ImportWords& words, take::Request& request) {
    using pairing::CaptureKind;
    const std::string file = request.file.path;
    const std::string& motionFile = words.motionFile;
    const std::string files[] = {file, motionFile};
    const std::optional<CaptureKind> as = ParseAs(words.as, files);
    const auto kindOf = [&](const std::string& path) {
        return IsStandardInput(path) ? as : pairing::KindOf(path);
    };
    const std::optional<CaptureKind> kind = kindOf(file);
    if (!kind && IsStandardInput(file))
        throw UsageError("-: --as bvh or --as asf must say what the standard input is");
    if (!kind) throw UsageError(fmt::format("{}: not a .bvh or .asf file", file));
    if (kind == CaptureKind::Motion)
        throw UsageError(
            fmt::format("{}: an .amc file needs its skeleton, SKEL.asf, before it", file));
    const bool isAlone = kind == CaptureKind::Biovision;
    request.format = isAlone ? take::Format::Biovision : take::Format::Acclaim;
    request.file = InputOf(file, *kind);
    if (motionFile.empty()) return;
    if (isAlone) throw UsageError(fmt::format("{}: a .bvh file takes no second file", motionFile));
    const bool isOnlyPosition = IsStandardInput(motionFile) && !as;
    if (!isOnlyPosition && kindOf(motionFile) != CaptureKind::Motion)
        throw UsageError(fmt::format("{}: not an .amc file", motionFile));
    request.motion = InputOf(motionFile, CaptureKind::Motion);
}

// Returns the absolute path with all symbolic links resolved, so that two paths of the same file
// give the same text.
std::string Resolved(const std::string& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(files::FollowLinks(path), error);
    const auto resolved = std::filesystem::weakly_canonical(absolute, error);
    return error ? path : resolved.string();
}

void ReadOutputs(const ImportWords& words, ImportRequest& request) {
    std::set<std::string> names;
    const auto claim = [&](const std::string& file) {
        RequireNotOverwritten(request.take.file.path, file);
        RequireNotOverwritten(words.motionFile, file);
        if (!names.insert(Resolved(file)).second)
            throw UsageError(fmt::format("{}: two outputs would write this file", file));
    };
    for (const std::string& path : words.outputs) {
        const OutputRequest output = {path, FormatOfFile(path)};
        for (const std::string& file : exporters::FilesOf(*output.format, path))
            claim(file);
        request.outputs.push_back(output);
    }
    if (!words.csvNames) return;
    RequireFileName("--csv-names", *words.csvNames);
    claim(*words.csvNames);
    request.csvNames = *words.csvNames;
}

// The processes of "zkhost convert" get the options that convert has checked already. Some of these
// processes write no output.
void RequireHonouredOptions(const ImportWords& words, const ImportRequest& request) {
    if (request.report) return;
    std::vector<const exporters::Format*> formats;
    for (const OutputRequest& output : request.outputs)
        formats.push_back(output.format);
    RequireHonoured(*words.command, formats, request.tree);
}

}  // namespace

void DescribeImport(CLI::App& import, ImportWords& words) {
    ImportRequest& request = words.request;
    import.add_option("file", request.take.file.path)->required();
    import.add_option("motion", words.motionFile);
    import.add_option("--as", words.as);
    DescribeImportOptions(import, words);
    import.add_option("-o,--output", words.outputs)->allow_extra_args(false);
    import.add_option("--csv-names", words.csvNames);
    import.add_flag("--make-folders", request.makeFolders);
    import.add_flag("--no-clobber", request.noClobber);
    import.add_flag("--tree", request.tree);
    import.add_flag("--quiet", request.quiet);
    import.add_flag("--timing", request.timing);
    import.add_option("--progress", words.progress);
    import.add_option("--threads", words.threads);
    import.add_option("--plugin", request.plugin);
    import.add_flag("--report", request.report);
}

ImportRequest BuildImportRequest(ImportWords& words) {
    ImportRequest& request = words.request;
    request.progress = ProgressChoice(words.progress);
    request.threads = ThreadCount(words.threads);
    if (request.report) request.quiet = true;
    SetFiles(words, request.take);
    ParseImportOptions(words, request.take.format == take::Format::Acclaim);
    // A file that is not mended is decoded with the user's character locale. The user's other
    // programs decode the file in the same way.
    request.take.readsInLocale = true;
    ReadOutputs(words, request);
    RequireHonouredOptions(words, request);
    return request;
}

}  // namespace cli
