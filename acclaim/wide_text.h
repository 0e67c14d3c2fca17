#pragma once

#include <string>

// Converts 8-bit text to characters by the process's character locale, up to the first byte that is
// not valid there.
std::wstring WideText(const char* text);
