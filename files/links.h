// Functions for symbolic links and for files that have several paths.
#pragma once

#include <string>

namespace files {

// If the path names a symbolic link, follows it and any further links. Returns the path that the
// last link leads to, even if no such file exists. Stops after 40 links or at a link that cannot be
// read, and returns the path that it has reached.
std::string FollowLinks(std::string path);
// Throws text::WriteError if the path is a symbolic link. A program calls this function for output
// names that the user did not choose, so that a link cannot redirect an output to another folder.
void RefuseLink(const std::string& path);

// Whether the two paths, after symbolic links are followed, name the same file. False if one of
// them names no file.
bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace files
