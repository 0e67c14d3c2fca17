// Finds for each joint of a file the joint of the scene that was made from it.
// Internal to export/.
#pragma once

#include <string_view>
#include <vector>

#include "export/clean_skeleton.h"
#include "export/file_skeleton.h"

namespace exporters {

// If each joint of the file has a joint in `joints`, puts `joints` into the file's order, gives
// them the file's names, and removes the end sites that the file does not have. Otherwise changes
// nothing and returns false. Names are made unique as the host does: a name that is already in use,
// or that is `modelName`, gets the smallest number from 1 that makes it unique.
bool MatchFile(const FileSkeleton& file, std::wstring_view modelName, std::vector<Joint>& joints);

}  // namespace exporters
