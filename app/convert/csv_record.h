// Records of comma-separated values, quoted as RFC 4180 says, each ended by a line feed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app {

std::string CsvRecord(const std::vector<std::string>& fields);

// Takes the first record off `text`. Empty where no whole one is left: without its line feed a
// record may have been cut.
std::vector<std::string> TakeCsvRecord(std::string_view& text);

}  // namespace app
