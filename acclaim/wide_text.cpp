#include "acclaim/wide_text.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

std::wstring WideText(const char* text) {
    // The buffer is filled with zeros. If the conversion stops early, the result therefore ends
    // there.
    std::wstring wide(std::strlen(text) + 1, L'\0');
    std::mbstowcs(wide.data(), text, wide.size());
    wide.resize(std::wcslen(wide.c_str()));
    return wide;
}
