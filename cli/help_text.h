// What --help prints, each fitting a screen.
#pragma once

#include <string_view>

namespace cli {

extern const std::string_view kMainHelp;
extern const std::string_view kImportHelp;
extern const std::string_view kCheckHelp;
extern const std::string_view kConvertHelp;
extern const std::string_view kCommandHelp;

}  // namespace cli
