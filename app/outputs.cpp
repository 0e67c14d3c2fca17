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
#include "app/print.h"
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

// The numbers lie beside the JSON, under its name.
ExportNotes WriteGltfPair(const std::string& path, OutputFile& file, const headless::Scene& scene,
                          const ExportOptions& options) {
    const std::string binaryPath = FilesOf({path, OutputFormat::Gltf}).back();
    OutputFile binary(binaryPath);
    const std::string binaryName(text::NamePart(binaryPath));
    ExportNotes notes = WriteGltf(file, binary, binaryName, scene, options);
    OutputFile::CommitBoth(binary, file);
    return notes;
}

ExportNotes Export(const OutputRequest& output, OutputFile& file, const RunRecord& record,
                   const ExportOptions& options) {
    const headless::Scene& scene = record.session.GetScene();
    switch (output.format) {
        case OutputFormat::Json:
            WriteJsonRecord(file, record);
            break;
        case OutputFormat::Glb:
            return WriteGlb(file, scene, options);
        case OutputFormat::Gltf:
            return WriteGltfPair(output.path, file, scene, options);
        case OutputFormat::Bvh:
            return WriteBvh(file, scene, options);
        case OutputFormat::Csv:
            return WriteCsv(file, scene, options);
        case OutputFormat::Npz:
            return WriteNpz(file, scene, options);
    }
    return {};
}

bool MakeFolderOf(const std::string& path) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code error;
    if (!folder.empty()) std::filesystem::create_directories(folder, error);
    if (error) PrintError(fmt::format("cannot write {}: {}", path, error.message()));
    return !error;
}

}  // namespace

void WriteOutput(const std::string& path, const std::function<void(OutputFile&)>& write,
                 OutputsResult& result) {
    const auto start = std::chrono::steady_clock::now();
    try {
        OutputFile file(path);
        write(file);
        file.Commit();
    } catch (const OutputError& error) {
        PrintError(error.what());
        result.failed = true;
        return;
    } catch (const ExportError& error) {
        PrintError(fmt::format("cannot write {}: {}", path, error.what()));
        result.failed = true;
        return;
    } catch (const std::bad_alloc&) {
        PrintError(fmt::format("cannot write {}: out of memory", path));
        result.failed = true;
        return;
    } catch (const OutputInterrupted&) {
        result.interrupted = true;
        return;
    }
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    result.milliseconds.push_back(took.count());
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
        WriteOutput(
            output.path, [&](OutputFile& file) { notes = Export(output, file, record, options); },
            result);
        for (const std::string& note : notes)
            PrintError(fmt::format("{}: {}", output.path, note));
    }
    return result;
}

}  // namespace app
