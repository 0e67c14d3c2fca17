// What must be true of the scene after any import, whatever came of it.
#pragma once

#include <string>
#include <vector>

namespace support {

// One sentence for each thing that is wrong; empty where nothing is. Checked of every scene: names
// are unique within a model and among models, links between objects agree, key times rise, times
// and values are of one length, all curves of an action are equally long, members and sources
// exist, and the bar is hidden. With `imported` also that no scratch property is left.
std::vector<std::string> SceneProblems(bool imported);

}  // namespace support
