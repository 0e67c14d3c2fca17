// Reads rows of numbers: lines that all have the same number of numbers. This is the fast way to
// read the values of a motion. A text that is not divided into such lines must be read with
// CStringFile, number by number.
#pragma once

#include <cstddef>

namespace textio {

// Where the numbers of a row are stored: number i of the row with the index `row` is stored in
// columns[i][row].
struct RowTarget {
    double* const* columns;
    std::size_t width;  // how many numbers a row has
};

// Returns the first byte from `at` on that is not a space, a tab, a carriage return or a line feed.
const char* SkipToRow(const char* at);

// Reads the row that begins at `at`. A row ends with a line feed, or with the text. Its numbers are
// separated by spaces, tabs and carriage returns. Every number must be one that
// CStringFile::GetNextFloat accepts; the stored value is then the same. It must not contain commas
// and parentheses, because in some formats they separate tokens. Returns the start of the next
// line, or null if the line does not have exactly `width` such numbers. In this case any of the
// row's values may have been changed. `last` is the end of the text. The byte at `last` must be
// NUL. A NUL byte before it ends the text, too.
const char* ReadRow(const char* at, const char* last, const RowTarget& target, std::size_t row);

// The reference for ReadRow: does the same, number by number and digit by digit.
const char* ReadRowByDigits(const char* at, const char* last, const RowTarget& target,
                            std::size_t row);

}  // namespace textio
