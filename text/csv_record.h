// Records of comma-separated values, quoted as RFC 4180 says, each ended by a line feed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// A field as a record holds it, in quotes where it needs them.
std::string CsvField(const std::string& field);

std::string CsvRecord(const std::vector<std::string>& fields);

// Reads the first record of `text` and removes it there. Empty where no whole one is left: without
// its line feed a record may have been cut.
std::vector<std::string> ReadCsvRecord(std::string_view& text);

}  // namespace text
