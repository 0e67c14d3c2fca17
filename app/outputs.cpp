#include "app/outputs.h"

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <new>
#include <system_error>

#include "app/interrupt.h"
#include "app/print.h"
#include "export/formats.h"
#include "export/json_record.h"
#include "files/write_file.h"
#include "text/byte_sink.h"
#include "text/path_text.h"

namespace app {
namespace {

const char* Text(bool value) {
    return value ? "true" : "false";
}

exporters::Source SourceOf(const ImportRequest& request) {
    exporters::Source source;
    source.files.push_back(request.file);
    if (!request.motionFile.empty()) source.files.push_back(request.motionFile);
    const bool isAcclaim = request.format == SourceFormat::Acclaim;
    source.format = isAcclaim ? "Acclaim ASF/AMC" : "Biovision BVH";
    source.tool = "zkhost " ZKHOST_VERSION;
    source.options = {{"nulls", Text(request.useNulls)},
                      {"chainFromParent", Text(request.chainFromParentJoint)},
                      {"effectorToLastBone", Text(request.effectorToLastBone)}};
    if (!isAcclaim) return source;
    source.options.emplace_back("limits", Text(request.applyLimits));
    if (request.lengthMultiplier)
        source.options.emplace_back("length", fmt::format("{}", *request.lengthMultiplier));
    return source;
}

exporters::Options OptionsOf(const ImportRequest& request, const exporters::RunRecord& record,
                             const Outcome& outcome) {
    exporters::Options options;
    options.scale = request.scale / record.multiplied;
    options.zUp = request.up == UpAxis::Z;
    options.framesPerSecond = request.framesPerSecond;
    options.resampleTo = request.resampleTo;
    options.mesh = request.mesh;
    options.digits = request.digits;
    options.models = outcome.models;
    options.source = SourceOf(request);
    return options;
}

files::WriteOutcome Write(const OutputRequest& output, const exporters::Content& content,
                          exporters::Notes& notes) {
    const exporters::Format& format = *output.format;
    const std::vector<std::string> paths = exporters::FilesOf(format, output.path);
    if (paths.size() == 1)
        return files::WriteFile(
            output.path,
            [&](text::ByteSink& out) { return exporters::Write(format, content, {out}, notes); },
            Interrupted);
    const auto fill = [&](text::ByteSink& out, text::ByteSink& side) {
        return exporters::Write(format, content, {out, &side, text::NamePart(paths[1])}, notes);
    };
    return files::WriteFilePair(output.path, paths[1], fill, Interrupted);
}

bool MakeFolderOf(const std::string& path) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code error;
    if (!folder.empty()) std::filesystem::create_directories(folder, error);
    if (error) PrintError(fmt::format("cannot write {}: {}", path, error.message()));
    return !error;
}

}  // namespace

void AddOutput(const std::function<files::WriteOutcome()>& write, OutputsResult& result) {
    const auto start = std::chrono::steady_clock::now();
    const files::WriteOutcome outcome = write();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    if (outcome.IsWritten()) result.milliseconds.push_back(took.count());
    if (!outcome.problem.empty()) PrintError(outcome.problem);
    result.failed |= !outcome.problem.empty();
    result.interrupted |= outcome.isCancelled;
}

OutputsResult WriteOutputs(const ImportRequest& request, const headless::Scene& scene,
                           const exporters::RunRecord& record, const Outcome& outcome) {
    const exporters::Options options = OptionsOf(request, record, outcome);
    const exporters::Content content{scene, options, &record};
    OutputsResult result;
    for (const OutputRequest& output : request.outputs) {
        if (result.interrupted) break;
        if (outcome.status == kImportFailed && !output.format->isRecord) continue;
        if (request.makeFolders && !MakeFolderOf(output.path)) {
            result.failed = true;
            continue;
        }
        exporters::Notes notes;
        AddOutput([&] { return Write(output, content, notes); }, result);
        for (const std::string& note : notes)
            PrintError(fmt::format("{}: {}", output.path, note));
    }
    return result;
}

}  // namespace app
