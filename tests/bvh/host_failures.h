// The message and the status of an import when an operation of the host fails.
#pragma once

namespace bvh_test {

struct HostFailure {
    const char* operation;
    const char* message;
    const char* status;
};

// An operation that is not listed never makes an import fail: the import ignores the failure, or
// continues without the operation's result. At some calls the failure of a listed operation is
// ignored too.
inline constexpr HostFailure kHostFailures[] = {
    {"GetActiveSceneRoot", "Failed to create main model", "0x80004005"},
    {"AddModel", "Failed to create main model", "0x80004005"},
    {"AddActionSource", "", "0x8000FFFF"},
    {"AddNull", "Failed to create Null object", "0x80004005"},
    {"Add2DChain", "Failed to create 2D chain", "0x80004005"},
    {"GetBones", "", "0x80004005"},
    {"GetBones", "Failed to add channel FCurve", "0x80020003"},
    {"AddBone", "Failed to add bone to chain", "0x80004005"},
    {"GetEffector", "Failed to create Null object", "0x80004005"},
    {"GetEffector", "", "0x80070057"},
    {"AddChild", "", "0x80004005"},
    {"AddGroup", "Failed to create animated objects group", "0x80004005"},
    {"AddCustomProperty", "Failed to add channel FCurve", "0x80004005"},
    {"AddFCurveParameter", "Failed to add channel FCurve", "0x80004005"},
    {"GetValue", "Failed to add channel FCurve", "0x80004005"},
    {"GetParameters", "Failed to add channel FCurve", "0x80020003"},
    {"GetItem", "Failed to add channel FCurve", "0x80020003"},
    {"GetKinematics", "Failed to add channel FCurve", "0x80020003"},
    {"GetLocal", "Failed to add channel FCurve", "0x80020003"},
    {"GetFullName", "Failed to add channel FCurve", "0x80004005"},
    {"SetKeys", "Failed to add channel FCurve", "0x80004005"},
    {"AddSourceItem", "Failed to add channel FCurve", "0x80004005"},
    {"ExecuteCommand", "", "0x80004005"},
    {"ApplyAction", "", "0x80004005"},
};

}  // namespace bvh_test
