// The meaning of the two numbers in a reference (Zelk::CRef). Object() is the id of a scene object,
// an action, a group or a property, or one of the two reserved numbers below. Part() is the number
// of a part; its meaning depends on what Object() refers to.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace headless {

// The scene root, which is above all objects.
inline constexpr std::uint32_t kSceneRootId = 0xFFFFFFFF;
// The user interface: the toolkit and its progress bar.
inline constexpr std::uint32_t kInterfaceId = 0xFFFFFFFE;
// Ids of objects, actions, groups and properties are smaller than this number.
inline constexpr std::uint32_t kLastId = kInterfaceId - 1;

namespace part {

inline constexpr std::uint32_t kSelf = 0;

// Parts of a scene object. The first channel has the number kFirstChannel; the others have the
// numbers after it, in the order of the enumeration Channel.
inline constexpr std::uint32_t kKinematics = 1;
inline constexpr std::uint32_t kLocalState = 2;
inline constexpr std::uint32_t kFirstChannel = 3;

// Parts of an action: the parameter AnimEnd, then the items in the order in which they were added.
inline constexpr std::uint32_t kAnimEnd = 1;
inline constexpr std::uint32_t kFirstItem = 2;

// Parts of a property. Parameter i, counted from 0 in the order in which the parameters were added,
// has the number kFirstCurveParameter + 2 * i. Its curve has the next number.
inline constexpr std::uint32_t kFirstCurveParameter = 1;

// Parts of the user interface.
inline constexpr std::uint32_t kToolkit = 1;
inline constexpr std::uint32_t kProgressBar = 2;

}  // namespace part

// The names and the paths of the channels, in the order of `Channel`. In a full name, the path
// comes after the object's name and a dot. The first six channels are those of the local transform.
inline constexpr std::size_t kChannelCount = 7;
inline constexpr std::size_t kKinematicChannelCount = 6;
inline constexpr std::array<std::wstring_view, kChannelCount> kChannelNames = {
    L"posx", L"posy", L"posz", L"rotx", L"roty", L"rotz", L"length"};
inline constexpr std::array<std::wstring_view, kChannelCount> kChannelPaths = {
    L"kine.local.posx", L"kine.local.posy", L"kine.local.posz", L"kine.local.rotx",
    L"kine.local.roty", L"kine.local.rotz", L"bone.length"};
inline constexpr std::wstring_view kLocalStateName = L"local";
inline constexpr std::wstring_view kLocalStatePath = L"kine.local";
inline constexpr std::wstring_view kAnimEndName = L"AnimEnd";

}  // namespace headless
