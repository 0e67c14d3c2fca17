#pragma once

#include <string>

// Decodes 8-bit text in the encoding of the process's locale, up to the first byte that is not
// valid in it.
std::wstring WideText(const char* text);
