// What happened in the embedded host, as lines that a test can state: what a row expects is what a
// failure prints.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/string.h"

namespace support {

using Lines = std::vector<std::string>;

// UTF-8.
std::string Utf8(const Zelk::CString& text);

// "value 0", "caption Importing Motion...", "visible 1", "minimum 0" and so on, in order.
Lines BarLines();

// "8: Imported 1 model successfully"; "-: text" with the host's default severity.
Lines LogLines();

// "AddClip(walk, walk.walk_Motion, -, -, -, -) 0": empty values and references as "-", the status
// as the number that people look up (0x80004005).
Lines CommandLines();

// The status as people look it up: "0x80004005", "0x00000000".
std::string StatusText(std::int32_t status);

// Whether the bar, if there ever was one, was hidden last.
bool BarIsHidden();

// A new session, with somebody before the screen or without.
void StartSession(bool interactive);

}  // namespace support
