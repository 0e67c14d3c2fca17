#pragma once

#include <set>
#include <string>

namespace files {

// Removes the temporary files that killed processes of this program left in the folders (see
// OutputFile). A temporary file is locked while a process writes it, and locked files are not
// removed. The process may also run on another machine. Folders that cannot be listed and files
// that cannot be removed are ignored.
void RemoveLeftovers(const std::set<std::string>& folders);

}  // namespace files
