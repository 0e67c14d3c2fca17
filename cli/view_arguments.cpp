#include "cli/view_arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <system_error>

#include "cli/honoured_options.h"
#include "cli/option_values.h"
#include "cli/standard_input.h"
#include "export/page.h"
#include "pairing/capture_kind.h"
#include "pairing/skeleton_pairing.h"
#include "text/path_text.h"

namespace cli {
namespace {

using pairing::CaptureKind;

// Returns the path of the skeleton in the motion's folder that belongs to the motion. Throws
// UsageError if there is none.
std::string SkeletonFor(const std::string& motion) {
    const std::string folder(text::FolderPart(motion));
    std::vector<std::string> skeletons;
    std::error_code error;
    for (std::filesystem::directory_iterator file(folder.empty() ? "." : folder, error), end;
         !error && file != end; file.increment(error)) {
        const std::string name = file->path().filename().string();
        if (pairing::KindOf(name) == CaptureKind::Skeleton) skeletons.push_back(name);
    }
    std::sort(skeletons.begin(), skeletons.end());
    const pairing::Pairing pairing = pairing::FindSkeleton(text::NamePart(motion), skeletons);
    if (pairing.skeleton.empty())
        throw UsageError(
            fmt::format("{}: its skeleton is not certain; write SKEL.asf before it", motion));
    return folder + pairing.skeleton;
}

// Makes a request for each take. An .asf file is the skeleton of all .amc files after it; one that
// no .amc file follows is shown alone.
class TakeCollector {
  public:
    TakeCollector(const ImportRequest& options, std::optional<CaptureKind> as)
        : options_(options), as_(as) {}

    void Add(const std::string& path) {
        const std::optional<CaptureKind> kind = IsStandardInput(path) ? as_ : pairing::KindOf(path);
        if (!kind && IsStandardInput(path))
            throw UsageError("-: --as bvh, asf or amc must say what the standard input is");
        if (!kind) throw UsageError(fmt::format("{}: not a .bvh, .asf or .amc file", path));
        const take::InputFile file = InputOf(path, *kind);
        if (kind == CaptureKind::Motion) return AddMotion(path, file);
        AddSkeletonAlone();
        if (kind == CaptureKind::Biovision) return AddTake(take::Format::Biovision, file);
        skeleton_ = file;
        isUsed_ = false;
    }

    std::vector<ImportRequest> Finish() {
        AddSkeletonAlone();
        return std::move(takes_);
    }

  private:
    void AddMotion(const std::string& path, const take::InputFile& motion) {
        if (skeleton_) {
            AddTake(take::Format::Acclaim, *skeleton_, motion);
            isUsed_ = true;
            return;
        }
        if (IsStandardInput(path))
            throw UsageError("-: the motion needs its skeleton, SKEL.asf, before it");
        AddTake(take::Format::Acclaim, InputOf(SkeletonFor(path), CaptureKind::Skeleton), motion);
    }

    void AddSkeletonAlone() {
        if (skeleton_ && !isUsed_) AddTake(take::Format::Acclaim, *skeleton_);
        skeleton_.reset();
    }

    void AddTake(take::Format format, const take::InputFile& file,
                 const std::optional<take::InputFile>& motion = std::nullopt) {
        ImportRequest request = options_;
        request.take.format = format;
        request.take.file = file;
        request.take.motion = motion;
        takes_.push_back(std::move(request));
    }

    const ImportRequest& options_;
    std::optional<CaptureKind> as_;
    std::optional<take::InputFile> skeleton_;
    bool isUsed_ = false;  // whether an .amc file has followed the skeleton
    std::vector<ImportRequest> takes_;
};

}  // namespace

void DescribeView(CLI::App& view, ViewWords& words) {
    view.add_option("files", words.files)->required();
    view.add_option("--as", words.import.as);
    DescribeImportOptions(view, words.import);
    view.add_flag("--no-open", words.noOpen);
    view.add_flag("--quiet", words.import.request.quiet);
    view.add_option("--progress", words.import.progress);
    view.add_option("--threads", words.import.threads);
    view.add_option("--plugin", words.import.request.plugin);
}

ViewRequest BuildViewRequest(ViewWords& words) {
    if (!exporters::HasViewer())
        throw UsageError("view: this build has no viewer, which needs Node.js and npm");
    ImportRequest& options = words.import.request;
    options.progress = ProgressChoice(words.import.progress);
    options.threads = ThreadCount(words.import.threads);
    const bool hasAcclaim = std::any_of(words.files.begin(), words.files.end(), pairing::IsAcclaim);
    const std::optional<CaptureKind> as = ParseAs(words.import.as, words.files);
    ParseImportOptions(words.import, hasAcclaim || (as && as != CaptureKind::Biovision));
    options.take.readsInLocale = true;
    RequireHonoured(*words.import.command, {exporters::FindFormat(".html")}, false);
    TakeCollector collector(options, as);
    for (const std::string& file : words.files)
        collector.Add(file);
    return {collector.Finish(), !words.noOpen};
}

}  // namespace cli
