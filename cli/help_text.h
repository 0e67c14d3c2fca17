// The texts that --help and --help-all print. A line has at most 79 columns. The texts for --help
// fit a screen, except that of "zkhost command", which lists all arguments of the plug-in.
#pragma once

#include <string>

namespace cli {

extern const std::string kMainHelp;
extern const std::string kImportHelp;
extern const std::string kImportAllHelp;  // for --help-all
extern const std::string kViewHelp;
extern const std::string kCheckHelp;
extern const std::string kConvertHelp;
extern const std::string kCommandHelp;

}  // namespace cli
