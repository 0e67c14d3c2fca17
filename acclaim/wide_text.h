#pragma once

#include <string>

// The characters of 8-bit text by the process's character locale, up to the first byte that has
// none there.
std::wstring WideText(const char* text);
