// Visits an object and all objects under it. The walk uses no recursion, because a file decides how
// deep the objects are, and a deep recursion could exhaust the stack.
#pragma once

#include <cstddef>

#include "headless/scene.h"

namespace headless {

// Calls `visit(object, depth)` for `root`, whose depth is 0, and for all objects under it. Every
// parent is visited before its children. Siblings are visited from the first to the last. The walk
// allocates nothing. `visit` must not change the scene.
template <class Visit>
void WalkObjects(const Object& root, Visit visit) {
    const Object* object = &root;
    std::size_t depth = 0;
    while (object != nullptr) {
        visit(*object, depth);
        if (object->firstChild != nullptr) {
            object = object->firstChild;
            ++depth;
            continue;
        }
        while (object != &root && object->nextSibling == nullptr) {
            object = object->parent;
            --depth;
        }
        object = object == &root ? nullptr : object->nextSibling;
    }
}

}  // namespace headless
