// Splits the target of an action item into the name of an object and a channel. An example is
// "LeftArm.kine.local.rotx". The target "kine.local.rotx" is a channel of the model itself.
#pragma once

#include <optional>
#include <string_view>

#include "headless/parts.h"
#include "headless/scene.h"
#include "headless/text.h"

namespace headless {

struct SplitTarget {
    std::wstring_view object;  // empty: the model itself
    std::optional<Channel> channel;
};

// `target` can be the path of a channel, or an object's name, a dot and the path of a channel. If
// it has neither form, both members of the result are empty.
inline SplitTarget Split(std::wstring_view target) {
    for (std::size_t index = 0; index < kChannelCount; ++index) {
        if (!target.ends_with(kChannelPaths[index])) continue;
        const auto channel = static_cast<Channel>(index);
        std::wstring_view object = target.substr(0, target.size() - kChannelPaths[index].size());
        if (object.empty()) return {object, channel};
        if (object.size() < 2 || object.back() != L'.') return {};
        object.remove_suffix(1);
        return {object, channel};
    }
    return {};
}

}  // namespace headless
