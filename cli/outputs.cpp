#include "cli/outputs.h"

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <system_error>

#include "cli/exports.h"
#include "cli/interrupt.h"
#include "cli/print.h"
#include "export/formats.h"
#include "export/json_record.h"
#include "files/write_file.h"
#include "take/import.h"
#include "text/byte_sink.h"
#include "text/path_text.h"

namespace cli {
namespace {

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

void AddOutput(const std::function<files::WriteOutcome()>& write, OutputsResult& result) {
    const auto start = std::chrono::steady_clock::now();
    const files::WriteOutcome outcome = write();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    if (outcome.IsWritten()) result.milliseconds.push_back(took.count());
    if (!outcome.problem.empty()) PrintError(outcome.problem);
    result.failed |= !outcome.problem.empty();
    result.interrupted |= outcome.isCancelled;
}

OutputsResult WriteOutputs(const ImportRequest& request, const take::Result& result) {
    const exporters::Options options = ExportOptionsOf(request, result);
    const exporters::RunRecord record = RecordOf(request, result);
    const exporters::Content content{result.Scene(), options, &record};
    OutputsResult written;
    for (const OutputRequest& output : request.outputs) {
        if (written.interrupted) break;
        if (!result.IsImported() && !output.format->isRecord) continue;
        if (request.makeFolders && !MakeFolderOf(output.path)) {
            written.failed = true;
            continue;
        }
        exporters::Notes notes;
        AddOutput([&] { return Write(output, content, notes); }, written);
        for (const std::string& note : notes)
            PrintError(fmt::format("{}: {}", output.path, note));
    }
    return written;
}

}  // namespace cli
