// Chooses the objects of a scene that are joints of the captured figure.
//
// A scene of nulls has one object for each joint and end site of the file. A scene of bones has
// other objects as well: chain roots, effectors, and the first bone of a chain that begins at its
// parent joint. Such a helper is left out if it has the position of a joint and no motion of its
// own, so that a file gives the same joints in both scenes.
// Internal to export/.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "export/file_skeleton.h"
#include "export/scene_nodes.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

struct Joint {
    static constexpr std::size_t kNoParent = std::numeric_limits<std::size_t>::max();

    const headless::Object* object = nullptr;
    std::size_t parent = kNoParent;  // index of the parent joint; kNoParent if there is none
    bool isLeaf = true;              // whether the joint has no children
    std::size_t node = 0;            // index in SceneNodes::Nodes()
    bool isEndSite = false;
    std::wstring name;        // differs from the names of all other joints of the model
    std::wstring sourceName;  // as the file has it, or the object's name if that is not known
};

// Returns all nodes as joints, with the names of their objects.
std::vector<Joint> AllJoints(const SceneNodes& nodes);

// Returns the joints of the figure in depth-first order, so that each parent comes before its
// children. `rest` has the global transform of each node in the base pose. If `file` is not null
// and the scene fits it, the joints are those of the file: in its order, with its names, and
// without an end site that was added to build bones. Otherwise the order and the names are those of
// the scene.
std::vector<Joint> CleanJoints(const SceneNodes& nodes, std::span<const headless::Transform> rest,
                               const headless::Object& model, const FileSkeleton* file);

}  // namespace exporters
