// The folder in the user's cache where "zkhost view" keeps its pages.
#pragma once

#include <string>

namespace cli {

// Makes the folder zkhost/view in $XDG_CACHE_HOME, or in ~/.cache if that variable is not set or
// not an absolute path (XDG Base Directory Specification). Only the user may read it. Removes the
// pages in it that are older than a day. Returns its path. Throws std::runtime_error if it cannot
// be made.
std::string PrepareViewFolder();

// Returns a name for the page of the takes: that of the first file and a number, with characters
// that any shell, browser and file system understands. `key` says what the page shows; equal keys
// give equal names, so that a page that is made again replaces the old one.
std::string PageName(const std::string& file, const std::string& key);

}  // namespace cli
