// What the two numbers of a reference stand for. An object number is the id of a scene object, an
// action, a group or a property, or one of the two reserved numbers below; what the part means
// depends on what has that id.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace headless {

// The root under which the models stand.
inline constexpr std::uint32_t kSceneRootId = 0xFFFFFFFF;
// The user interface: the toolkit and its progress bar.
inline constexpr std::uint32_t kInterfaceId = 0xFFFFFFFE;
// The last id that can be given out.
inline constexpr std::uint32_t kLastId = kInterfaceId - 1;

namespace part {

inline constexpr std::uint32_t kSelf = 0;

// Of a scene object. The channels follow each other in the order of `Channel`.
inline constexpr std::uint32_t kKinematics = 1;
inline constexpr std::uint32_t kLocalState = 2;
inline constexpr std::uint32_t kFirstChannel = 3;

// Of an action: its end, then its items in their order.
inline constexpr std::uint32_t kAnimEnd = 1;
inline constexpr std::uint32_t kFirstItem = 2;

// Of a property: parameter and curve in turn, in the order they were added.
inline constexpr std::uint32_t kFirstCurveParameter = 1;

// Of the user interface.
inline constexpr std::uint32_t kToolkit = 1;
inline constexpr std::uint32_t kProgressBar = 2;

}  // namespace part

// Of the channels in their order: the parameter's name, and what stands between an object's name
// and that parameter in a path.
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
