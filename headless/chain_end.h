// Where a chain ends, and how its effector is seen from there.
#pragma once

#include <cstring>
#include <vector>

#include "headless/scene.h"
#include "headless/transform.h"

namespace headless {

// The object at whose end the effector of a chain is: the last bone, or the root of a chain without
// bones. Null for an object that is no effector, and for an effector whose chain was deleted.
inline const Object* EndOfChain(const Object& object) {
    if (object.type != ObjectType::ChainEffector || object.chainRoot == nullptr) return nullptr;
    const std::vector<Object*>& bones = object.chainRoot->chainData->bones;
    return bones.empty() ? object.chainRoot : bones.back();
}

// The effector seen from EndOfChain(effector), which must not be null: turned by its angle to the
// last bone, `length` away along the bone's X axis. `length` is that of the last bone (at rest
// Object::length, in a motion what drives it) and 0 in a chain without bones.
inline Transform EffectorSeenFromEnd(const Object& effector, double length) {
    Transform seen;
    std::memcpy(seen.axes, effector.chainRoot->chainData->effectorAngle.data(), sizeof seen.axes);
    seen.origin[0] = length;
    return seen;
}

}  // namespace headless
