// Names the columns of a CSV table so that the programs that read it keep the names.
// Internal to export/.
#pragma once

#include <string>
#include <vector>

#include "export/tables.h"

namespace exporters {

// Returns a name for each column of the table. Each character that is not an ASCII letter, an ASCII
// digit or "_" becomes "_". If a name is then already in use, "_2", "_3" and so on is appended to
// it.
std::vector<std::string> ColumnNames(const Table& table);

}  // namespace exporters
