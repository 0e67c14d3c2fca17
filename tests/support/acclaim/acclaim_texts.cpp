#include "tests/support/acclaim/acclaim_texts.h"

#include <stdexcept>

#include "headless/session.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

Zelk::CString HostText(const std::string& ascii) {
    return std::wstring(ascii.begin(), ascii.end()).c_str();
}

const headless::Scene& CurrentScene() {
    return headless::Session::Current().GetScene();
}

}  // namespace

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << StatusText(outcome.status) << " \"" << outcome.message << "\" line " << outcome.line;
}

Outcome Report(const CAcclaimImport& importer, std::int32_t status) {
    std::uint32_t line = 0;
    Outcome outcome{status, Utf8(importer.GetLastError(&line, nullptr)), 0};
    if (!outcome.message.empty() && importer.WasParsing()) outcome.line = line + 1;
    return outcome;
}

std::uint32_t ColumnOf(const CAcclaimImport& importer) {
    std::uint32_t column = 0;
    importer.GetLastError(nullptr, &column);
    return column;
}

Outcome ImportSkeleton(CAcclaimImport& importer, const std::string& asf) {
    const TemporaryFolder dir;
    return Report(importer,
                  importer.ImportSkeleton(HostText(dir.Write("test.asf", asf)), L"skel").GetCode());
}

Outcome ImportMotion(CAcclaimImport& importer, const std::string& amc) {
    const TemporaryFolder dir;
    return Report(importer,
                  importer.ImportMotion(HostText(dir.Write("test.amc", amc)), L"motion").GetCode());
}

const MOCAPMODEL& NodeOf(CAcclaimImport& importer, const std::string& name) {
    const MOCAPMODEL* const node = importer.FindModelByName(name.c_str());
    if (node == nullptr) throw std::runtime_error("no node is called " + name);
    return *node;
}

const headless::Object& ObjectNamed(const std::string& name) {
    for (const headless::Object* object : CurrentScene().Objects())
        if (Utf8(object->name) == name) return *object;
    throw std::runtime_error("no object is called " + name);
}

const headless::Object& ModelNamed(const std::string& name) {
    const headless::Object& model = ObjectNamed(name);
    if (model.type != headless::ObjectType::Model) throw std::runtime_error(name + " is no model");
    return model;
}

const headless::ActionSource& ActionNamed(const std::string& name) {
    for (const auto& action : ModelNamed("skel").modelData->actions)
        if (Utf8(action->name) == name) return *action;
    throw std::runtime_error("no action is called " + name);
}

std::map<std::string, TestCurve> MotionCurves(const std::string& motion) {
    std::map<std::string, TestCurve> curves;
    for (const headless::ActionItem& item : ActionNamed(motion).items) {
        const headless::Keys& keys = item.GetCurve().keys;
        TestCurve& curve = curves[Utf8(item.Target())];
        if (keys.times) curve.times.assign(keys.times->begin(), keys.times->end());
        if (keys.values) curve.values.assign(keys.values->begin(), keys.values->end());
    }
    return curves;
}

const char kSampleAsf[] = R"(# a sample
:version 1.10
:name sample
:units
  mass 1.0
  length 0.5
  angle deg
:documentation
  About
  the sample
:root
  order TX TY TZ RX RY RZ
  axis XYZ
  position 1 2 3
  orientation 0 0 10
:bonedata
  begin
    id 1
    name back
    direction 0 1 0
    length 4
    axis 0 0 20 XYZ
    dof rx ry rz
    limits (-30 30)
           (-inf inf)
           (0 90)
  end
  begin
    id 2
    name joint
    direction 1 0 0
    length 0.001
    axis 0 0 0 XYZ
    dof rz ry
  end
  begin
    id 3
    name arm
    direction 1 0 0
    length 2
    axis 10 20 30 XYZ
    dof rz rx |
  end
  begin
    id 4
    name hand
    direction 0 0 1
    length 1
    axis 0 0 0 XYZ
  end
:hierarchy
  begin
    root back
    back joint
    joint arm
    arm hand
  end
)";

const char kSampleAmc[] = R"(#!OML:ASF
:FULLY-SPECIFIED
:DEGREES
1
root 1 2 3 10 20 30
back 5 10 15
joint 20 30
arm 10 20 2
2
root 1.5 2 3 11 21 31
back 6 11 16
joint 21 31
arm 11 21 2.5
3
root 2 2 3 12 22 32
back 7 12 17
joint 22 32
arm 12 22 3
)";

}  // namespace support
