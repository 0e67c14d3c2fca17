// What must be true of the scene after any import, successful or not.
#pragma once

#include <string>
#include <vector>

namespace support {

// Returns a sentence for each problem. In every scene, names must be unique within a model and
// among models, links between objects must agree, key times must rise, a curve must have as many
// times as values, all curves of an action must have equally many keys, members of groups and
// sources of clips must exist, and the bar must be hidden. With `imported`, no scratch property may
// be left.
std::vector<std::string> SceneProblems(bool imported);

}  // namespace support
