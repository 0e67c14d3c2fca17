// The parts of a path as text; no file is looked at.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Up to the last slash, that included; empty without one.
std::string_view FolderPart(std::string_view path);
// After the last slash.
std::string_view NamePart(std::string_view path);
// The path without its extension, the dot included; a name that begins with its only dot is whole.
std::string_view WithoutExtension(std::string_view path);

// From the name's last dot on, in lower case (ASCII letters alone): ".bvh", of a file that is named
// ".BVH" too. Empty without a dot.
std::string LowerCaseExtension(std::string_view path);

}  // namespace text
