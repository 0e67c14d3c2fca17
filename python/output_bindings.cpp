// Writes files.
#include <pybind11/stl.h>
#include <stdexcept>

#include "export/csv_names.h"
#include "export/formats.h"
#include "files/write_file.h"
#include "python/bindings.h"
#include "python/option_values.h"
#include "python/scene.h"
#include "python/watcher.h"
#include "text/byte_sink.h"

namespace python {

namespace py = pybind11;

namespace {

struct HonouredName {
    const char* name;
    unsigned bit;
};

// The keyword arguments that only some formats honour.
constexpr HonouredName kHonoured[] = {
    {"scale", exporters::kScale},
    {"up", exporters::kUpAxis},
    {"fps", exporters::kRate},
    {"resample", exporters::kResampling},
    {"mesh", exporters::kMesh},
    {"digits", exporters::kDigits},
    {"frames", exporters::kFrames},
    {"in_place", exporters::kInPlace},
    {"all_nodes", exporters::kAllNodes},
    {"aim", exporters::kAim},
    {"animations", exporters::kAnimations},
    {"float32", exporters::kFloat32},
    {"compress", exporters::kCompress},
    {"provenance", exporters::kProvenance},
};

// Returns for each extension the names of the options that the format honours.
py::dict Formats() {
    py::dict formats;
    for (const exporters::Format& format : exporters::Formats()) {
        py::list honoured;
        for (const HonouredName& option : kHonoured)
            if ((format.honoured & option.bit) != 0) honoured.append(option.name);
        formats[py::str(std::string(format.extension))] = honoured;
    }
    return formats;
}

const exporters::Format& FormatOf(const std::string& extension) {
    const exporters::Format* const format = exporters::FindFormat(extension);
    if (!format) throw std::invalid_argument(extension);
    return *format;
}

std::vector<std::string> FilesOf(const std::string& extension, const std::string& path) {
    return exporters::FilesOf(FormatOf(extension), path);
}

std::vector<exporters::SourceFile> SourcesOf(const py::list& files) {
    std::vector<exporters::SourceFile> sources;
    for (const py::handle& file : files) {
        const auto described = file.cast<py::tuple>();
        sources.push_back({described[0].cast<std::string>(),
                           described[1].cast<std::optional<std::uint64_t>>(),
                           described[2].cast<std::string>()});
    }
    return sources;
}

std::string_view LastPart(std::string_view path) {
    return path.substr(path.find_last_of('/') + 1);
}

// What a file that is to be written holds.
class Output {
  public:
    Output(const Scene& scene, const py::dict& options, const py::list& files,
           const py::object& progress)
        : scene_(scene),
          options_(scene.Complete(ExportOptionsOf(options), SourcesOf(files))),
          record_(scene.Record()),
          watcher_(progress) {
        if (options.contains("findings")) {
            record_.findings.emplace();
            for (const py::handle& finding : options["findings"])
                record_.findings->push_back(finding.cast<std::string>());
        }
    }

    // Writes the file or files. Throws ValueError if the format cannot hold the scene, and OSError
    // if the file system refuses. Returns what was left out.
    exporters::Notes Write(const exporters::Format& format, const std::string& path) {
        const std::vector<std::string> paths = exporters::FilesOf(format, path);
        files::WriteOutcome outcome;
        {
            const py::gil_scoped_release unlocked;
            if (paths.size() == 1)
                outcome = files::WriteFile(
                    path, [&](text::ByteSink& out) { return Fill(format, {out}); });
            else
                outcome = files::WriteFilePair(
                    path, paths[1], [&](text::ByteSink& out, text::ByteSink& side) {
                        return Fill(format, {out, &side, LastPart(paths[1])});
                    });
        }
        Require(outcome);
        return notes_;
    }

    void WriteNames(const std::string& path) {
        files::WriteOutcome outcome;
        {
            const py::gil_scoped_release unlocked;
            outcome = files::WriteFile(path, [&](text::ByteSink& out) {
                refusal_ = exporters::WriteCsvNames(out, scene_.result.Scene(), options_);
                return refusal_;
            });
        }
        Require(outcome);
    }

    std::string Bytes(const exporters::Format& format) {
        text::StringSink out;
        files::WriteOutcome outcome;
        try {
            const py::gil_scoped_release unlocked;
            outcome.problem = Fill(format, {out});
        } catch (const text::WriteCancelled&) {
            outcome.isCancelled = true;
        }
        Require(outcome);
        return out.Bytes();
    }

  private:
    std::string Fill(const exporters::Format& format, const exporters::Sinks& sinks) {
        const exporters::Progress progress([this](double share) {
            if (watcher_.Poll(share)) throw text::WriteCancelled();
        });
        refusal_ = exporters::Write(format, {scene_.result.Scene(), options_, &record_, progress},
                                    sinks, notes_);
        return refusal_;
    }

    void Require(const files::WriteOutcome& outcome) const {
        watcher_.Rethrow();
        if (!refusal_.empty()) throw py::value_error(refusal_);
        if (outcome.problem.empty()) return;
        PyErr_SetString(PyExc_OSError, outcome.problem.c_str());
        throw py::error_already_set();
    }

    const Scene& scene_;
    exporters::Options options_;
    exporters::RunRecord record_;
    Watcher watcher_;
    exporters::Notes notes_;
    std::string refusal_;  // why the format cannot hold the scene
};

exporters::Notes Write(const std::shared_ptr<Scene>& scene, const py::dict& options,
                       const py::list& files, const std::string& extension, const std::string& path,
                       const py::object& progress) {
    return Output(*scene, options, files, progress).Write(FormatOf(extension), path);
}

void WriteNames(const std::shared_ptr<Scene>& scene, const py::dict& options,
                const std::string& path) {
    Output(*scene, options, py::list(), py::none()).WriteNames(path);
}

py::bytes WriteBytes(const std::shared_ptr<Scene>& scene, const py::dict& options,
                     const std::string& extension) {
    return Output(*scene, options, py::list(), py::none()).Bytes(FormatOf(extension));
}

}  // namespace

void BindOutputs(py::module_& module) {
    module.def("formats", &Formats);
    module.def("files_of", [](const std::string& extension, const std::string& path) {
        py::list files;
        for (const std::string& file : FilesOf(extension, path))
            files.append(py::bytes(file));
        return files;
    });
    module.def("write", &Write);
    module.def("write_names", &WriteNames);
    module.def("write_bytes", &WriteBytes);
}

}  // namespace python
