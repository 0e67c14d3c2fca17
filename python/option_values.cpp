#include "python/option_values.h"

#include <optional>
#include <pybind11/stl.h>
#include <string>
#include <utility>

namespace python {

namespace py = pybind11;

namespace {

// Sets the member if the dictionary has the key. None sets an optional member to nullopt.
template <class Value>
void Put(const py::dict& values, const char* key, Value& member) {
    if (values.contains(key)) member = values[key].cast<Value>();
}

exporters::UpAxis AxisOf(const std::string& name) {
    return name == "x"   ? exporters::UpAxis::X
           : name == "z" ? exporters::UpAxis::Z
                         : exporters::UpAxis::Y;
}

take::Preset PresetOf(const std::string& name) {
    return name == "cmu"    ? take::Preset::Cmu
           : name == "none" ? take::Preset::None
                            : take::Preset::Auto;
}

}  // namespace

void PutImportOptions(const py::dict& values, take::Request& request) {
    bool bones = false;
    std::string preset;
    Put(values, "bones", bones);
    Put(values, "preset", preset);
    request.useNulls = !bones;
    request.preset = PresetOf(preset);
    Put(values, "chain_from_parent", request.chainFromParentJoint);
    Put(values, "effector_to_last_bone", request.effectorToLastBone);
    Put(values, "group", request.createGroup);
    Put(values, "clip", request.addClip);
    Put(values, "limits", request.applyLimits);
    Put(values, "length", request.lengthMultiplier);
    Put(values, "as_is", request.asIs);
    Put(values, "strict", request.strict);
    Put(values, "encoding", request.encoding);
    Put(values, "fps", request.framesPerSecond);
}

exporters::Options ExportOptionsOf(const py::dict& values) {
    exporters::Options options;
    std::string up;
    std::string knownUp;
    std::optional<std::pair<std::int64_t, std::int64_t>> frames;
    Put(values, "up", up);
    Put(values, "known_up", knownUp);
    Put(values, "frames", frames);
    options.up = AxisOf(up);
    if (!knownUp.empty()) options.knownUp = AxisOf(knownUp);
    if (frames) options.frames = exporters::FrameRange{frames->first, frames->second};
    Put(values, "scale", options.scale);
    Put(values, "fps", options.framesPerSecond);
    Put(values, "resample", options.resampleTo);
    Put(values, "in_place", options.inPlace);
    Put(values, "all_nodes", options.allNodes);
    Put(values, "mesh", options.mesh);
    Put(values, "aim", options.aim);
    Put(values, "animation_per_model", options.animationPerModel);
    Put(values, "float32", options.float32);
    Put(values, "compress", options.compress);
    Put(values, "digits", options.digits);
    Put(values, "unit", options.metresPerUnit);
    return options;
}

take::InputFile InputFileOf(const py::tuple& file) {
    take::InputFile input{file[0].cast<std::string>()};
    input.content = file[1].cast<std::optional<std::string>>();
    input.name = file[2].cast<std::string>();
    return input;
}

}  // namespace python
