#pragma once

#include "headless/scene.h"

namespace headless {

// Returns the object that changes if a value or a curve is given to this channel of `target`.
// Mostly that is `target` itself. A position that is given to the first bone of a chain changes the
// chain root instead. The result is null for the position of any other bone and for all channels of
// an effector, because they are computed from the chain.
inline const Object* DrivenBy(const Object& target, Channel channel) {
    if (target.chainRoot == nullptr || target.type == ObjectType::ChainRoot) return &target;
    if (target.type == ObjectType::ChainEffector) return nullptr;
    if (channel >= Channel::RotX) return &target;
    const bool isFirst = target.chainRoot->chainData->bones.front() == &target;
    return isFirst ? target.chainRoot : nullptr;
}

}  // namespace headless
