// The end of a chain, and the transform of the effector relative to it.
#pragma once

#include <cstring>
#include <vector>

#include "headless/scene.h"
#include "headless/transform.h"

namespace headless {

// If `object` is an effector, returns the object at whose end the effector is. That is the last
// bone of the chain, or the chain root if the chain has no bones. Returns null for other objects,
// and for an effector whose chain was deleted.
inline const Object* EndOfChain(const Object& object) {
    if (object.type != ObjectType::ChainEffector || object.chainRoot == nullptr) return nullptr;
    const std::vector<Object*>& bones = object.chainRoot->chainData->bones;
    return bones.empty() ? object.chainRoot : bones.back();
}

// The transform of the effector relative to EndOfChain(effector), which must not be null. The
// rotation is ChainData::effectorAngle; the translation is `length` along the x axis. `length` is
// the length of the last bone: Object::length, or the length that a motion sets. In a chain without
// bones `length` is 0.
inline Transform EffectorSeenFromEnd(const Object& effector, double length) {
    Transform seen;
    std::memcpy(seen.axes, effector.chainRoot->chainData->effectorAngle.data(), sizeof seen.axes);
    seen.origin[0] = length;
    return seen;
}

}  // namespace headless
