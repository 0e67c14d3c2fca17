#pragma once

#include <set>
#include <string>

namespace files {

// Removes the unfinished files that writers of this program left in the folders when they were
// killed. What someone is still writing, on whatever machine, stays.
void RemoveLeftovers(const std::set<std::string>& folders);

}  // namespace files
