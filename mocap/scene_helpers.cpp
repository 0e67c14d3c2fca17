#include "mocap/scene_helpers.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "host/automation.h"
#include "host/constants.h"
#include "math/angles.h"
#include "math/rotation_math.h"

#if defined(__SANITIZE_ADDRESS__)
#define MOCAP_HAS_LEAK_CHECKER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MOCAP_HAS_LEAK_CHECKER
#endif
#endif
#ifdef MOCAP_HAS_LEAK_CHECKER
#include <sanitizer/lsan_interface.h>
#endif

namespace {

// Tells the leak checker, in builds that have one, that this memory is left allocated on purpose.
void AllowLeak([[maybe_unused]] const void* memory) {
#ifdef MOCAP_HAS_LEAK_CHECKER
    __lsan_ignore_object(memory);
#endif
}

double RadiansOf(const Zelk::KinematicState& local, const wchar_t* parameter) {
    return local.GetParameterValue(parameter, Zelk::kCurrentTime).AsDouble() *
           math::kRadiansPerDegree;
}

void CopyMatrix(double to[4][4], const double from[4][4]) {
    std::memcpy(to, from, 16 * sizeof(double));
}

}  // namespace

Zelk::CString GetKineParamFullName(const Zelk::CString& paramName, const Zelk::CString& stopName,
                                   Zelk3DObject& object) {
    // The names are collected from the object upwards, and are joined only once. The time is
    // therefore proportional to the length of the path, not to its square.
    std::vector<Zelk::CString> names;
    ZKObject current = object;
    while (current.IsValid()) {
        names.push_back(current.GetName());
        current = current.GetParent();
        if (!current.IsValid() || current.GetName() == stopName) break;
    }
    std::wstring path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        path += name->GetWideString();
        path += L'.';
    }
    if (!(paramName == Zelk::CString(L"bone.length"))) path += L"kine.local.";
    path += paramName.GetWideString();
    return Zelk::CString(path.c_str());
}

Zelk::CStatus AddActionSource(Zelk::Model& model, const Zelk::CString& name,
                              Zelk::ActionSource& source, double animEnd) {
    source = model.AddActionSource(name);
    if (!source.IsValid()) return Zelk::status::kUnexpected;
    source.PutParameterValue(L"AnimEnd", animEnd, Zelk::kCurrentTime);
    return Zelk::status::kOk;
}

void GetLocalRotation(const Zelk3DObject& object, double rotation[4][4], double inverse[4][4]) {
    const Zelk::KinematicState local = object.GetKinematics().GetLocal();
    const double rx = RadiansOf(local, L"rotx");
    const double ry = RadiansOf(local, L"roty");
    const double rz = RadiansOf(local, L"rotz");
    MatrixRotationXYZ(rotation, rx, ry, rz);
    MatrixRotationZYX(inverse, -rx, -ry, -rz);
}

void GetBoneGlobalMatrix(Zelk3DObject& object, const Zelk::CString& stopName, double global[4][4],
                         double inverse[4][4]) {
    MatrixIdentity(global);
    MatrixIdentity(inverse);
    Zelk3DObject current = object;
    while (current.IsValid()) {
        double rotation[4][4], opposite[4][4], product[4][4];
        GetLocalRotation(current, rotation, opposite);
        MatrixMult(global, rotation, product);
        CopyMatrix(global, product);
        MatrixMult(opposite, inverse, product);
        CopyMatrix(inverse, product);

        const ZKObject parent = current.GetParent();
        if (parent.GetName() == stopName) break;
        current = Zelk3DObject(parent.GetRef());
    }
}

Zelk::CString ZelkStringFromANSI(const char* text) {
    if (text == nullptr) return {};
    const std::size_t length = std::strlen(text) + 1;
    // The buffer is intentionally not freed. It is filled with zeros. If the conversion stops
    // early, the result therefore ends there.
    auto* const wide = new (std::nothrow) wchar_t[length]();
    if (wide == nullptr) return {};
    AllowLeak(wide);
    std::mbstowcs(wide, text, length);
    return wide;
}

void LogStatus(const Zelk::CString& message) {
    Zelk::AutomationApplication().LogMessage(message);
}
