#pragma once

#include <string>

namespace host_test {

// Everything in the scene, one item a line, with exact numbers: equal texts mean equal scenes. The
// log, the bar and the record of commands are not included.
std::wstring SceneText();
// The log, the bar and the number of commands.
std::wstring SessionText();

}  // namespace host_test
