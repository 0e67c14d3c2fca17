// Checks files, and pairs their names.
#include <pybind11/stl.h>

#include "bridge/check_source.h"
#include "files/system_storage.h"
#include "pairing/capture_kind.h"
#include "pairing/skeleton_pairing.h"
#include "python/bindings.h"
#include "python/option_values.h"
#include "survey/finding_text.h"

namespace python {

namespace py = pybind11;

namespace {

// A text is None if it is not known.
py::object TextOrNone(const std::string& text) {
    return text.empty() ? py::object(py::none()) : py::object(py::str(text));
}

py::dict FactsOf(const survey::Facts& facts) {
    py::dict described;
    described["joints"] = facts.joints;
    described["end_sites"] = facts.endSites;
    described["channels"] = facts.channels;
    described["frames"] = facts.frames;
    described["fps"] = facts.framesPerSecond;
    described["seconds"] = facts.seconds;
    described["height"] = facts.height;
    described["unit"] = TextOrNone(facts.unit);
    described["up"] = TextOrNone(facts.up);
    described["orders"] = facts.orders;
    return described;
}

py::dict Describe(const bridge::CheckedSource& checked) {
    py::dict described;
    described["file"] = py::bytes(checked.file);
    py::list findings;
    for (const survey::Finding& finding : checked.survey.findings) {
        std::string json;
        survey::AppendFindingJson(json, finding);
        findings.append(py::bytes(json));
    }
    described["findings"] = findings;
    described["facts"] = FactsOf(checked.survey.facts);
    return described;
}

py::list Check(const py::tuple& file, const py::object& motion, bool isAcclaim, bool isMotionAlone,
               const std::string& encoding) {
    const take::InputFile input = InputFileOf(file);
    std::optional<take::InputFile> second;
    if (!motion.is_none()) second = InputFileOf(motion.cast<py::tuple>());
    survey::Options options;
    options.encoding = encoding;
    std::vector<bridge::CheckedSource> checked;
    {
        const py::gil_scoped_release unlocked;
        files::SystemStorage storage;
        checked = bridge::CheckSource(input, second ? &*second : nullptr,
                                      {isAcclaim, isMotionAlone}, options, storage);
    }
    py::list described;
    for (const bridge::CheckedSource& each : checked)
        described.append(Describe(each));
    return described;
}

py::object KindOf(const std::string& path) {
    const std::optional<pairing::CaptureKind> kind = pairing::KindOf(path);
    return kind ? py::object(py::str(std::string(pairing::NameOf(*kind)))) : py::object(py::none());
}

py::tuple FindSkeleton(const std::string& motion, const std::vector<std::string>& skeletons) {
    const pairing::Pairing found = pairing::FindSkeleton(motion, skeletons);
    return py::make_tuple(py::bytes(found.skeleton), py::bytes(found.problem));
}

}  // namespace

void BindSurveys(py::module_& module) {
    module.def("check", &Check);
    module.def("kind_of", &KindOf);
    module.def("find_skeleton", &FindSkeleton);
}

}  // namespace python
