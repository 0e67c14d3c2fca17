// The requests that a command line is parsed into.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/check_request.h"
#include "dataset/request.h"
#include "export/formats.h"
#include "export/options.h"
#include "take/request.h"

namespace cli {

// The command line is wrong; the message says why.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The plug-in cannot be loaded; the message says which files were tried.
class PluginError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Whether the plug-in gets a progress bar. Auto: where stderr is a terminal.
enum class Progress : std::uint8_t { Auto, On, Off };

struct OutputRequest {
    std::string path;
    const exporters::Format* format = nullptr;  // the one that the path's extension names
};

struct ImportRequest {
    take::Request take;
    exporters::Options exports;
    std::vector<OutputRequest> outputs;

    bool makeFolders = false;  // create the folders of the outputs
    bool tree = false;         // print the scene's objects
    bool quiet = false;        // print only errors and warnings
    bool timing = false;       // print how long the import and each output took
    bool report = false;       // for convert: print an ImportReport as one line
    Progress progress = Progress::Auto;
    std::string plugin;  // its path; empty: the one installed with zkhost
};

// One argument for the plug-in's callback. Only the member that `kind` names is used.
struct RawArgument {
    enum class Kind : std::uint8_t { Text, Boolean, Word, Real };
    Kind kind = Kind::Text;
    std::string text;
    bool boolean = false;
    std::uint16_t word = 0;
    double real = 0.0;
};

struct CommandRequest {
    std::string name;
    std::vector<RawArgument> arguments;
    std::string jsonFile;  // where the JSON record is written; empty: nowhere
    Progress progress = Progress::Auto;
    std::string plugin;  // as in ImportRequest
};

// The text to print for --help or --version; nothing else is done.
struct Answer {
    std::string text;
};

using Request = std::variant<Answer, ImportRequest, CheckRequest, dataset::Request, CommandRequest>;

// Returns whether the word is "import", "check", "convert" or "command".
bool IsCommand(std::string_view word);

// Parses the arguments, which do not include the program's name. Throws UsageError.
Request ParseArguments(std::span<const char* const> arguments);

// Parses "str:TEXT", "bool:true", "word:0x10" or "real:1.5". Throws UsageError.
RawArgument ParseRawArgument(std::string_view text);

// Parses a decimal number, "inf" or "nan"; nothing where the text is not one number as a whole.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace cli
