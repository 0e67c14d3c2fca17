// What --help prints, each fitting a screen.
#pragma once

#include <string>

namespace cli {

extern const std::string kMainHelp;
extern const std::string kImportHelp;
extern const std::string kCheckHelp;
extern const std::string kConvertHelp;
extern const std::string kCommandHelp;

}  // namespace cli
