#pragma once

#include "headless/scene.h"

namespace headless {

// The object whose channel a value or a curve for `target` changes: mostly `target` itself. A
// position for a chain's first bone is the position of the chain root. The other bones' positions
// and an effector's channels are computed from the chain and cannot be changed: null.
inline const Object* DrivenBy(const Object& target, Channel channel) {
    if (target.chainRoot == nullptr || target.type == ObjectType::ChainRoot) return &target;
    if (target.type == ObjectType::ChainEffector) return nullptr;
    if (channel >= Channel::RotX) return &target;
    const bool isFirst = target.chainRoot->chainData->bones.front() == &target;
    return isFirst ? target.chainRoot : nullptr;
}

}  // namespace headless
