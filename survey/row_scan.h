// A look at the rows of a motion that does not read their numbers.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/byte_masks.h"

namespace survey {

struct RowScan {
    std::size_t rows = 0;  // lines that are not blank
    // Each of them has the number of words that was asked for, and the plug-in reads every word as
    // the number that it is. Otherwise `rows` is not to be used.
    bool plain = false;
    const char* end = nullptr;  // of the text, or of its rows: where a line begins with HIERARCHY
};

// `text` is followed by a byte that can be read. Rows have `words` words.
RowScan ScanRows(std::string_view text, std::size_t words,
                 ByteMasksKernel kernel = ChooseByteMasks());

// Whether the word is a decimal that the plug-in reads as the number it is.
bool IsSurelyPlain(std::string_view word);

}  // namespace survey
