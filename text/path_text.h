// Splits paths into their parts. Only the text of the path is used; no file is read.
#pragma once

#include <string>
#include <string_view>

namespace text {

// The path up to its last slash, with the slash. Empty if there is no slash.
std::string_view FolderPart(std::string_view path);
// The path after its last slash.
std::string_view NamePart(std::string_view path);
// The path without its extension and the dot of the extension. A name whose only dot is its first
// character, such as ".bvh", has no extension here.
std::string_view WithoutExtension(std::string_view path);

// The part of NamePart(path) that begins at its last dot, with ASCII letters in lower case: ".bvh".
// A file that is named ".BVH" has the extension ".bvh" here. Empty if the name has no dot.
std::string LowerCaseExtension(std::string_view path);

// Whether the path names a file that is packed by gzip: it ends in ".gz", in any letter case.
bool IsGzipName(std::string_view path);
// The path without ".gz", if IsGzipName; otherwise the whole path.
std::string_view WithoutGzip(std::string_view path);

}  // namespace text
