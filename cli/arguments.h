// What the user asked for on the command line.
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

// The command line makes no sense; says why.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// There is no plug-in to import with; says what was tried.
class PluginError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

enum class Progress : std::uint8_t { Auto, On, Off };  // Auto: where stderr is a terminal
struct OutputRequest {
    std::string path;
    const exporters::Format* format = nullptr;  // by the path's extension
};

struct ImportRequest {
    take::Request take;
    exporters::Options exports;
    std::vector<OutputRequest> outputs;

    bool makeFolders = false;  // those that the outputs go to
    bool tree = false;
    bool quiet = false;
    bool timing = false;
    bool report = false;  // for convert: what came of it, in one line of stdout
    Progress progress = Progress::Auto;
    std::string plugin;  // empty: the one that belongs to this program
};

// An argument of the raw callback as the user wrote it.
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
    std::string jsonFile;  // empty: none
    Progress progress = Progress::Auto;
    std::string plugin;
};

// A text that answers the command line by itself: help or the version.
struct Answer {
    std::string text;
};

using Request = std::variant<Answer, ImportRequest, CheckRequest, dataset::Request, CommandRequest>;

// "import", "check", "convert", "command".
bool IsCommand(std::string_view word);

// `arguments` without the program's name. Throws UsageError.
Request ParseArguments(std::span<const char* const> arguments);

// "str:TEXT", "bool:true", "word:0x10", "real:1.5". Throws UsageError.
RawArgument ParseRawArgument(std::string_view text);

// The whole text as a number: decimal, "inf" or "nan".
std::optional<double> ParseNumber(std::string_view text);

}  // namespace cli
