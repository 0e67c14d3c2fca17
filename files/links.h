// Symbolic links, and files that several paths lead to.
#pragma once

#include <string>

namespace files {

// What a chain of symbolic links ends at, the file itself existing or not.
std::string FollowLinks(std::string path);
// Refuses a symbolic link, with a text::WriteError: programs that choose their outputs' names do
// not let a link lead them elsewhere.
void RefuseLink(const std::string& path);

// Whether the two paths lead to the same existing file, by whatever names.
bool IsSameFile(const std::string& a, const std::string& b);

}  // namespace files
