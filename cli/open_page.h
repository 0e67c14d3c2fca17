// Opens a page in the user's browser.
#pragma once

#include <string>

namespace cli {

// Starts xdg-open, which finds the user's browser, and does not wait for it. Returns an empty text,
// or why it could not be started.
std::string OpenPage(const std::string& path);

}  // namespace cli
