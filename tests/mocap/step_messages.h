// The messages of single steps of building a scene. Whole imports replace some of them with their
// own messages.
#pragma once

namespace mocap_test {

inline constexpr const char* kNoParameter = "Failed to obtain channel parameter";
inline constexpr const char* kNoKeys = "Failed to set FCurve keys";
inline constexpr const char* kNoCurveItem = "Failed to add FCurve to Action";
inline constexpr const char* kNoPoseItem = "Failed to add source item";
inline constexpr const char* kRepeatedRotation = "Rotation channel found more than once on a node";
inline constexpr const char* kNoSlot = "No channel left for a missing rotation";
inline constexpr const char* kCancelledMessage = "User cancelled command";
inline constexpr const char* kNoNull = "Failed to create Null object";
inline constexpr const char* kNoGroup = "Failed to create animated objects group";
inline constexpr const char* kNoChain = "Failed to create 2D chain";
inline constexpr const char* kNoBone = "Failed to add bone to chain";

inline constexpr const char* kStepMessages[] = {
    kNoParameter, kNoKeys,           kNoCurveItem, kNoPoseItem, kRepeatedRotation,
    kNoSlot,      kCancelledMessage, kNoNull,      kNoGroup,    kNoChain,
    kNoBone};

}  // namespace mocap_test
