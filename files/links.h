// Functions for symbolic links and for files that have several paths.
#pragma once

#include <string>

namespace files {

// Follows the symbolic links at the end of the path and returns the path of what they lead to,
// whether it exists or not. It stops after 40 links and at a link that cannot be read, and then
// returns the path so far.
std::string FollowLinks(std::string path);
// Throws text::WriteError if the path is a symbolic link. A program that chooses the names of its
// outputs itself calls it, so that a link cannot redirect them.
void RefuseLink(const std::string& path);

// Whether the two paths lead to the same file. False if one of them leads to no file.
bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace files
