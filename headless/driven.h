#pragma once

#include "headless/scene.h"

namespace headless {

// The object whose channel a value or a curve for `target` really drives: mostly itself. A position
// for a chain's first bone is the place of the chain root; other positions of bones and all of an
// effector follow from the chain, so nothing drives them (null).
inline const Object* DrivenBy(const Object& target, Channel channel) {
    if (target.chainRoot == nullptr || target.type == ObjectType::ChainRoot) return &target;
    if (target.type == ObjectType::ChainEffector) return nullptr;
    if (channel >= Channel::RotX) return &target;
    const bool isFirst = target.chainRoot->chainData->bones.front() == &target;
    return isFirst ? target.chainRoot : nullptr;
}

}  // namespace headless
