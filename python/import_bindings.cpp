// Reads files, and builds scenes from arrays.
#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <stdexcept>

#include "bridge/array_scene.h"
#include "bridge/import_progress.h"
#include "export/motion_facts.h"
#include "files/system_storage.h"
#include "headless/text.h"
#include "python/bindings.h"
#include "python/option_values.h"
#include "python/scene.h"
#include "python/watcher.h"
#include "take/findings.h"
#include "take/plugin_library.h"

namespace python {

namespace py = pybind11;

namespace {

using Numbers = py::array_t<double, py::array::c_style | py::array::forcecast>;

const take::Plugin& LoadedPlugin() {
    static const take::LoadedPlugin loaded = take::LoadPlugin();
    if (!loaded.plugin) throw std::runtime_error(loaded.problem);
    return *loaded.plugin;
}

const char* NameOf(take::RateOrigin origin) {
    switch (origin) {
        case take::RateOrigin::File:
            return "file";
        case take::RateOrigin::Request:
            return "request";
        case take::RateOrigin::Preset:
            return "preset";
        case take::RateOrigin::Assumed:
            break;
    }
    return "assumed";
}

const char* NameOf(take::Status status) {
    switch (status) {
        case take::Status::Imported:
            return "imported";
        case take::Status::ImportedInPart:
            return "part";
        case take::Status::Cancelled:
            return "cancelled";
        case take::Status::Failed:
            break;
    }
    return "failed";
}

// Runs the import without the interpreter's lock. The bar exists only for the polls of the watcher,
// so its events are not kept.
take::Result Run(const take::Request& request, Watcher& watcher, std::uint64_t amcValues) {
    const take::Plugin& plugin = LoadedPlugin();
    const ImportScope scope;
    const py::gil_scoped_release unlocked;
    bridge::ImportProgress progress({request.format, request.useNulls, amcValues});
    take::Listener listener;
    listener.onBar = [&](const headless::BarEvent& event) {
        progress.Receive(event);
        watcher.PollOften(progress.Share());
    };
    listener.isCancelled = [&] {
        progress.ReceivePoll();
        return watcher.PollOften(progress.Share());
    };
    files::SystemStorage storage;
    take::Result result = take::Import(plugin, request, storage, listener);
    result.recording.bar = {};
    if (!watcher.IsCancelled()) watcher.Poll(1.0);
    return result;
}

// The plug-in keeps what earlier commands with other arguments have set, which says nothing about
// this import.
void ForgetOtherCommands(take::Format format, USERINPUT& input) {
    if (format == take::Format::Acclaim) {
        input.strBVHFile = Zelk::CString();
        return;
    }
    input.strASFFile = input.strAMCFile = Zelk::CString();
    input.bApplyLimits = input.bOverrideLength = false;
    input.dLengthMultiplier = 0.0;
}

py::dict DescribeImport(const std::shared_ptr<Scene>& scene) {
    const take::Result& result = scene->result;
    py::dict described;
    described["status"] = NameOf(result.outcome.status);
    described["refused"] = result.isRefused;
    described["error"] = py::bytes(result.FirstError());
    described["problem"] = py::bytes(result.problem);
    py::list findings;
    for (const std::string& finding : take::FindingsJson(result.findings))
        findings.append(py::bytes(finding));
    described["findings"] = findings;
    described["rate_origin"] = NameOf(result.rateOrigin);
    described["stated_fps"] = result.statedRate;
    py::list models;
    for (const headless::Object* model : result.Scene().Models())
        models.append(py::reinterpret_steal<py::object>(PyUnicode_FromWideChar(
            model->name.GetWideString(), static_cast<Py_ssize_t>(model->name.Length()))));
    described["models"] = models;
    described["scene"] = scene;
    return described;
}

py::dict Read(const py::tuple& file, const py::object& motion, bool isAcclaim,
              const py::dict& options, const py::object& progress, std::uint64_t amcValues) {
    take::Request request;
    request.format = isAcclaim ? take::Format::Acclaim : take::Format::Biovision;
    request.file = InputFileOf(file);
    if (!motion.is_none()) request.motion = InputFileOf(motion.cast<py::tuple>());
    PutImportOptions(options, request);
    request.hasProgressBar = true;
    Watcher watcher(progress);
    const auto scene = std::make_shared<Scene>();
    scene->result = Run(request, watcher, amcValues);
    watcher.Rethrow();
    ForgetOtherCommands(request.format, scene->result.userInput);
    request.file.content.reset();
    if (request.motion) request.motion->content.reset();
    scene->request = std::move(request);
    return DescribeImport(scene);
}

// A parent is an index, or -1 for a root.
exporters::FileSkeleton SkeletonOf(const std::vector<std::string>& names,
                                   const std::vector<std::int64_t>& parents,
                                   const std::vector<bool>& areEnds) {
    exporters::FileSkeleton skeleton(names.size());
    for (std::size_t joint = 0; joint < names.size(); ++joint) {
        skeleton[joint].name = names[joint];
        skeleton[joint].isEndSite = areEnds.at(joint);
        if (parents.at(joint) < 0) continue;
        skeleton[joint].parent = static_cast<std::size_t>(parents[joint]);
        if (skeleton[joint].parent >= joint) throw std::invalid_argument("parents");
    }
    return skeleton;
}

std::shared_ptr<Scene> Build(const std::string& name, const std::vector<std::string>& names,
                             const std::vector<std::int64_t>& parents,
                             const std::vector<bool>& areEnds, const Numbers& offsets,
                             const std::vector<double>& frames, double secondsPerFrame,
                             const Numbers& positions, const Numbers& quaternions) {
    bridge::ArrayMotion motion;
    motion.name = name;
    motion.skeleton = SkeletonOf(names, parents, areEnds);
    const auto joints = static_cast<py::ssize_t>(names.size());
    const auto rows = static_cast<py::ssize_t>(frames.size());
    if (offsets.size() != 3 * joints || positions.size() != 3 * joints * rows ||
        quaternions.size() != 4 * joints * rows || rows == 0)
        throw std::invalid_argument("the arrays have different sizes");
    for (py::ssize_t joint = 0; joint < joints; ++joint) {
        const double* const offset = offsets.data() + 3 * joint;
        motion.offsets.push_back({offset[0], offset[1], offset[2]});
    }
    motion.frames = frames;
    motion.secondsPerFrame = secondsPerFrame;
    motion.positions = positions.data();
    motion.quaternions = quaternions.data();
    auto scene = std::make_shared<Scene>();
    scene->isFromArrays = true;
    scene->skeletons = {motion.skeleton};
    const ImportScope scope;
    const py::gil_scoped_release unlocked;
    scene->result.recording = bridge::BuildScene(motion);
    return scene;
}

}  // namespace

void BindImports(py::module_& module) {
    // Scenes are immutable, so Python's objects may share one.
    const py::class_<Scene, std::shared_ptr<Scene>> scene(module, "Scene");
    module.def("read", &Read);
    module.def("build", &Build);
}

}  // namespace python
