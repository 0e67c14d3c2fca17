// Everything below an object, without recursion: the depth comes from a file.
#pragma once

#include <cstddef>

#include "headless/scene.h"

namespace exporters {

// Calls `visit(object, depth)` for `root` (depth 0) and all that hangs under it, every parent
// before its children, children in their order.
template <class Visit>
void WalkObjects(const headless::Object& root, Visit visit) {
    const headless::Object* object = &root;
    std::size_t depth = 0;
    while (object) {
        visit(*object, depth);
        if (object->firstChild) {
            object = object->firstChild;
            ++depth;
            continue;
        }
        while (object != &root && !object->nextSibling) {
            object = object->parent;
            --depth;
        }
        object = object == &root ? nullptr : object->nextSibling;
    }
}

}  // namespace exporters
