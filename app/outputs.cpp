#include "app/outputs.h"

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <new>
#include <system_error>

#include "app/export/bvh.h"
#include "app/export/csv.h"
#include "app/export/gltf.h"
#include "app/export/npz.h"
#include "app/interrupt.h"
#include "app/print.h"
#include "files/write_file.h"
#include "text/byte_sink.h"
#include "text/path_text.h"

namespace app {
namespace {

const char* Text(bool value) {
    return value ? "true" : "false";
}

ExportSource SourceOf(const ImportRequest& request) {
    ExportSource source;
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

ExportOptions OptionsOf(const ImportRequest& request, const RunRecord& record,
                        const Outcome& outcome) {
    ExportOptions options;
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

// Fills the output and, of a .gltf, the file of numbers that belongs to it.
ExportNotes Export(const OutputRequest& output, text::ByteSink& file, const RunRecord& record,
                   const ExportOptions& options) {
    const headless::Scene& scene = record.session.GetScene();
    switch (output.format) {
        case OutputFormat::Json:
            WriteJsonRecord(file, record);
            break;
        case OutputFormat::Glb:
            return WriteGlb(file, scene, options);
        case OutputFormat::Bvh:
            return WriteBvh(file, scene, options);
        case OutputFormat::Csv:
            return WriteCsv(file, scene, options);
        case OutputFormat::Npz:
            return WriteNpz(file, scene, options);
        case OutputFormat::Gltf:
            break;  // a pair of files
    }
    return {};
}

// What `write` refuses, as the reason why there is no output.
std::string Reason(const std::function<ExportNotes()>& write, ExportNotes& notes) {
    try {
        notes = write();
        return {};
    } catch (const ExportError& error) {
        return error.what();
    }
}

files::WriteOutcome Write(const OutputRequest& output, const RunRecord& record,
                          const ExportOptions& options, ExportNotes& notes) {
    if (output.format != OutputFormat::Gltf) {
        const auto fill = [&](text::ByteSink& file) {
            return Reason([&] { return Export(output, file, record, options); }, notes);
        };
        return files::WriteFile(output.path, fill, Interrupted);
    }
    const std::string binaryPath = FilesOf(output).back();
    const auto fill = [&](text::ByteSink& file, text::ByteSink& binary) {
        const std::string_view binaryName = text::NamePart(binaryPath);
        const headless::Scene& scene = record.session.GetScene();
        return Reason([&] { return WriteGltf(file, binary, binaryName, scene, options); }, notes);
    };
    return files::WriteFilePair(output.path, binaryPath, fill, Interrupted);
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

OutputsResult WriteOutputs(const ImportRequest& request, const RunRecord& record,
                           const Outcome& outcome) {
    const ExportOptions options = OptionsOf(request, record, outcome);
    OutputsResult result;
    for (const OutputRequest& output : request.outputs) {
        if (result.interrupted) break;
        if (outcome.status == kImportFailed && output.format != OutputFormat::Json) continue;
        if (request.makeFolders && !MakeFolderOf(output.path)) {
            result.failed = true;
            continue;
        }
        ExportNotes notes;
        AddOutput([&] { return Write(output, record, options, notes); }, result);
        for (const std::string& note : notes)
            PrintError(fmt::format("{}: {}", output.path, note));
    }
    return result;
}

}  // namespace app
