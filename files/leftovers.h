#pragma once

#include <set>
#include <string>

namespace files {

// Removes the temporary files that killed processes of this program left in the folders (see
// OutputFile). A file that a process still writes is not removed, because that process holds a lock
// on the file, even if it runs on another machine. Folders that cannot be listed and files that
// cannot be removed are ignored.
void RemoveLeftovers(const std::set<std::string>& folders);

}  // namespace files
