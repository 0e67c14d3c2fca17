// Walks over everything under an object. There is no recursion, because the depth comes from a
// file.
#pragma once

#include <cstddef>

#include "headless/scene.h"

namespace headless {

// Calls `visit(object, depth)` for `root` (depth 0) and all objects under it, every parent before
// its children and children in their order. Allocates nothing. `visit` must not change the scene.
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
