#pragma once

#include <set>
#include <string>

namespace files {

// Removes the temporary files that killed processes of this program left in the folders (see
// OutputFile). A file that a process still writes, also on another machine, is not removed, because
// its writer holds a lock on it. Files that cannot be listed or removed are ignored.
void RemoveLeftovers(const std::set<std::string>& folders);

}  // namespace files
