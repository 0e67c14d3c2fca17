#pragma once

#include <set>
#include <string>
#include <sys/types.h>

namespace files {

// Removes the temporary files that killed processes of this program left in the folders (see
// OutputFile). A temporary file is locked while a process writes it, and locked files are not
// removed. The process may also run on another machine. Folders that cannot be listed and files
// that cannot be removed are ignored.
void RemoveLeftovers(const std::set<std::string>& folders);

// Removes the temporary files that a process which was killed has left in the folder. It looks for
// their names and does not list the folder, so it takes no longer if the folder has many files. A
// file can have such a high number that it is not found; RemoveLeftovers removes it.
void RemoveLeftoversOf(pid_t process, const std::string& folder);

}  // namespace files
