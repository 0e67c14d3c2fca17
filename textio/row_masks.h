// The fast way to read a row, for processors with SSE2. Internal to textio/.
#pragma once

#include <cstddef>

#include "textio/row_reader.h"

namespace textio {

#if defined(__SSE2__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#define TEXTIO_HAS_ROW_MASKS

// Does what ReadRow does, with the same results, but returns null for more rows: those near the end
// of the text, and those with numbers that are not plain decimals of at most eight digits before
// the point and sixteen after it, or that have too many digits in all for an exact double.
const char* ReadRowByMasks(const char* at, const char* last, const RowTarget& target,
                           std::size_t row);
#endif

}  // namespace textio
