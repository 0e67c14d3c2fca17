#pragma once

#include <string>

// Decodes a text with the encoding of the process's locale. The result ends before the first byte
// that is not valid in this encoding.
std::wstring WideText(const char* text);
