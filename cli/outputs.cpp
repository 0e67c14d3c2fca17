#include "cli/outputs.h"

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <system_error>

#include "cli/exports.h"
#include "cli/import_show.h"
#include "cli/interrupt.h"
#include "cli/print.h"
#include "export/csv_names.h"
#include "export/formats.h"
#include "export/json_record.h"
#include "files/disk_full.h"
#include "files/write_file.h"
#include "take/import.h"
#include "text/byte_sink.h"
#include "text/path_text.h"
#include "text/wide_text.h"

namespace cli {
namespace {

// Returns a progress that draws the line, if it is not null, and that cancels the output if the
// user asks to stop.
exporters::Progress ProgressOf(const std::string& path, ProgressLine* line) {
    const std::wstring caption =
        text::DecodeUtf8(fmt::format("Writing {}...", text::NamePart(path)));
    return exporters::Progress([caption, line](double share) {
        if (Interrupted()) throw text::WriteCancelled();
        if (line) line->Show(caption, share);
    });
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

// Adds what became of an output with these files, except its time. Prints errors.
void RecordOutcome(const files::WriteOutcome& outcome, const std::vector<std::string>& paths,
                   OutputsResult& result) {
    if (outcome.IsWritten()) result.files.insert(result.files.end(), paths.begin(), paths.end());
    if (!outcome.problem.empty()) PrintError(outcome.problem);
    result.failed |= !outcome.problem.empty();
    result.diskIsFull |= outcome.isDiskFull;
    if (!outcome.isCancelled) return;
    result.interrupted = true;
    result.cancelled = paths.front();
}

// Writes the table of the true names. It is not timed, because it does not grow with the motion.
void WriteNames(const std::string& path, const headless::Scene& scene,
                const exporters::Options& options, OutputsResult& result) {
    const files::WriteOutcome outcome = files::WriteFile(
        path, [&](text::ByteSink& out) { return exporters::WriteCsvNames(out, scene, options); },
        Interrupted);
    RecordOutcome(outcome, {path}, result);
}

// Returns whether the folder exists afterwards. If not, records the failure in `result`.
bool MakeFolderOf(const std::string& path, OutputsResult& result) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code error;
    if (!folder.empty()) std::filesystem::create_directories(folder, error);
    if (!error) return true;
    PrintError(fmt::format("cannot write {}: {}", path, error.message()));
    result.failed = true;
    result.diskIsFull |= files::IsDiskFull(error.value());
    return false;
}

}  // namespace

std::string FindExistingOutput(const ImportRequest& request) {
    std::vector<std::string> paths;
    for (const OutputRequest& output : request.outputs)
        for (const std::string& path : exporters::FilesOf(*output.format, output.path))
            paths.push_back(path);
    if (!request.csvNames.empty()) paths.push_back(request.csvNames);
    for (const std::string& path : paths) {
        std::error_code error;
        if (std::filesystem::exists(path, error)) return path;
    }
    return {};
}

void AddOutput(const std::function<files::WriteOutcome()>& write,
               const std::vector<std::string>& paths, OutputsResult& result) {
    const auto start = std::chrono::steady_clock::now();
    const files::WriteOutcome outcome = write();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    result.milliseconds.push_back(outcome.IsWritten() ? std::optional(took.count()) : std::nullopt);
    RecordOutcome(outcome, paths, result);
}

OutputsResult WriteOutputs(const ImportRequest& request, const take::Result& result,
                           const std::vector<exporters::SourceFile>& sources, bool drawsBar) {
    const exporters::Options options = ExportOptionsOf(request, result, sources);
    const exporters::RunRecord record = RecordOf(request, result);
    OutputsResult written;
    for (const OutputRequest& output : request.outputs) {
        if (written.interrupted) break;
        // The other outputs would find the disk full as well.
        const bool isDue = !written.diskIsFull && (result.IsImported() || output.format->isRecord);
        const bool hasFolder = !isDue || !request.makeFolders || MakeFolderOf(output.path, written);
        if (!isDue || !hasFolder) {
            written.milliseconds.emplace_back();
            continue;
        }
        exporters::Notes notes;
        const auto write = [&] {
            const std::unique_ptr<ProgressLine> line = drawsBar ? MakeBar() : nullptr;
            return Write(output,
                         {result.Scene(), options, &record, ProgressOf(output.path, line.get())},
                         notes);
        };
        AddOutput(write, exporters::FilesOf(*output.format, output.path), written);
        for (const std::string& note : notes)
            PrintError(fmt::format("{}: {}", output.path, note));
    }
    if (!request.csvNames.empty() && result.IsImported() && !written.interrupted &&
        !written.diskIsFull)
        WriteNames(request.csvNames, result.Scene(), options, written);
    return written;
}

std::string CancelledMessage(const std::string& path, const std::vector<std::string>& kept) {
    std::string message = fmt::format("cancelled while writing {}", path);
    for (std::size_t index = 0; index < kept.size(); ++index) {
        const bool isLast = index + 1 == kept.size();
        message += index == 0 ? "; " : isLast ? " and " : ", ";
        message += kept[index];
    }
    if (kept.empty()) return message + "; no output was written";
    message += kept.size() == 1 ? " was kept" : " were kept";
    return message;
}

}  // namespace cli
