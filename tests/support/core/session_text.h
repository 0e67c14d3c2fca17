// What happened in the embedded host, as lines of text that a test can compare and print.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/string.h"

namespace support {

using Lines = std::vector<std::string>;

// Converts a host text to UTF-8.
std::string Utf8(const Zelk::CString& text);

// "value 0", "caption Importing Motion...", "visible 1", "minimum 0" and so on, in order.
Lines BarLines();

// "8: Imported 1 model successfully"; "-: text" with the host's default severity.
Lines LogLines();

// "AddClip(walk, walk.walk_Motion, -, -, -, -) 0": the name, the arguments ("-" for an empty value)
// and the status (0, or as StatusText has it).
Lines CommandLines();

// The status in hexadecimal: "0x80004005", "0x00000000".
std::string StatusText(std::int32_t status);

// Returns whether the bar is hidden now, or was never shown.
bool BarIsHidden();

// Starts a new session, interactive or not.
void StartSession(bool interactive);

}  // namespace support
