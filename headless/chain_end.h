// The end of a chain, and the transform of the effector relative to it.
#pragma once

#include <cstring>
#include <vector>

#include "headless/scene.h"
#include "headless/transform.h"

namespace headless {

// For an effector, the object at whose end it is: the last bone of its chain, or the chain root if
// the chain has no bones. Null for other objects, and for an effector whose chain was deleted.
inline const Object* EndOfChain(const Object& object) {
    if (object.type != ObjectType::ChainEffector || object.chainRoot == nullptr) return nullptr;
    const std::vector<Object*>& bones = object.chainRoot->chainData->bones;
    return bones.empty() ? object.chainRoot : bones.back();
}

// The transform of the effector relative to EndOfChain(effector), which must not be null. Its
// rotation is ChainData::effectorAngle; its translation is `length` along the x axis. `length` is
// that of the last bone, which is Object::length or what a motion sets, and 0 in a chain without
// bones.
inline Transform EffectorSeenFromEnd(const Object& effector, double length) {
    Transform seen;
    std::memcpy(seen.axes, effector.chainRoot->chainData->effectorAngle.data(), sizeof seen.axes);
    seen.origin[0] = length;
    return seen;
}

}  // namespace headless
