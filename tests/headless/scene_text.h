#pragma once

#include <string>

namespace host_test {

// All that stands in the scene, a line each, numbers as exact as they are kept: two equal texts are
// two equal scenes. Without the log, the bar and the record of commands.
std::wstring SceneText();
// The log, the bar and the count of commands.
std::wstring SessionText();

}  // namespace host_test
