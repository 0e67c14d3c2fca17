// Writes and reads records of comma-separated values. Fields are quoted as in RFC 4180. Each record
// ends with a line feed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// Returns the field as it is written in a record, in quotes if it needs them.
std::string CsvField(const std::string& field);

// Returns the fields as one record, with its line feed.
std::string CsvRecord(const std::vector<std::string>& fields);

// Reads the first record of `text` and removes it from `text`. If no line feed ends the record, the
// record may be cut off. The result is empty in that case, and `text` becomes empty.
std::vector<std::string> ReadCsvRecord(std::string_view& text);

}  // namespace text
