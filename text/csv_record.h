// Writes and reads records of comma-separated values. They are quoted as in RFC 4180, and each ends
// with a line feed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// The text of a field, in quotes if it needs them.
std::string CsvField(const std::string& field);

// The text of a record, with its line feed.
std::string CsvRecord(const std::vector<std::string>& fields);

// Reads the first record of `text` and removes it from `text`. Without a line feed at its end a
// record may be cut off: then the result is empty, and so is `text` afterwards.
std::vector<std::string> ReadCsvRecord(std::string_view& text);

}  // namespace text
