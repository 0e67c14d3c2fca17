// Checks the rows of a motion without reading their numbers.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/byte_masks.h"

namespace survey {

struct RowScan {
    std::size_t rows = 0;  // number of lines that are not blank; only valid if `plain` is set
    // Whether the plug-in reads the rows correctly: each row has the expected number of words, and
    // each word is one number that the plug-in accepts.
    bool plain = false;
    // The end of the rows: the next word HIERARCHY, or the end of the text. Null if the scan
    // stopped earlier, because it found something that is not plain.
    const char* end = nullptr;
};

// Scans the rows at the start of `text`. A readable byte must follow the text in memory. `words` is
// the expected number of words in a row.
RowScan ScanRows(std::string_view text, std::size_t words,
                 ByteMasksKernel kernel = ChooseByteMasks());

// Whether the word is a decimal that the plug-in reads correctly.
bool IsSurelyPlain(std::string_view word);

}  // namespace survey
