// Checks the rows of a motion without reading their numbers.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/byte_masks.h"

namespace survey {

struct RowScan {
    std::size_t rows = 0;  // lines that are not blank; only meaningful if `plain`
    // Each row has as many words as asked for, and the plug-in reads every word as the number that
    // it is.
    bool plain = false;
    // Where the rows end: at a line that begins with HIERARCHY, or at the end of the text. Null if
    // neither was reached.
    const char* end = nullptr;
};

// Scans the rows at the start of `text`, which must be followed by a readable byte. Each row should
// have `words` words.
RowScan ScanRows(std::string_view text, std::size_t words,
                 ByteMasksKernel kernel = ChooseByteMasks());

// Whether the word is a decimal that the plug-in reads as the number that it is.
bool IsSurelyPlain(std::string_view word);

}  // namespace survey
