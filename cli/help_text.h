// The texts that --help prints. Each fits on a screen of 80 columns and 24 lines.
#pragma once

#include <string>

namespace cli {

extern const std::string kMainHelp;
extern const std::string kImportHelp;
extern const std::string kCheckHelp;
extern const std::string kConvertHelp;
extern const std::string kCommandHelp;

}  // namespace cli
