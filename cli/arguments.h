// Parses a command line into a request.
#pragma once

#include <cstddef>
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

// Thrown if the command line is wrong; the message says why.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Thrown if the plug-in cannot be loaded; the message says why.
class PluginError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Whether the plug-in gets a progress bar. Auto: only if stderr is a terminal.
enum class Progress : std::uint8_t { Auto, On, Off };

struct OutputRequest {
    std::string path;
    // The format that belongs to the extension of `path`. ParseArguments sets it.
    const exporters::Format* format = nullptr;
};

struct ImportRequest {
    take::Request take;
    exporters::Options exports;
    std::vector<OutputRequest> outputs;

    // The path of the CSV file with the names of the columns of a .csv output; empty: none.
    std::string csvNames;
    bool provenance = false;  // record check sums of the sources in the outputs

    bool makeFolders = false;  // create the folders of the outputs
    bool noClobber = false;    // import nothing if an output exists already
    bool tree = false;         // print the scene's objects
    bool quiet = false;        // print only errors and warnings
    bool timing = false;       // print how long the import and each output took
    bool report = false;       // print the ImportReport that "zkhost convert" reads
    Progress progress = Progress::Auto;
    std::optional<std::size_t> threads;  // of an import; nullopt: as many as are of use
    std::string plugin;  // the path of the plug-in; empty: take::LoadPlugin looks for it
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
    std::string jsonFile;  // the path to write the JSON record to; empty: none is written
    Progress progress = Progress::Auto;
    std::optional<std::size_t> threads;  // of an import; nullopt: as many as are of use
    std::string plugin;  // the path of the plug-in; empty: take::LoadPlugin looks for it
};

// "zkhost view": imports that go to one page.
struct ViewRequest {
    std::vector<ImportRequest> takes;  // at least one; they have no outputs
    bool open = true;                  // open the page in the user's browser
};

// The request for --help and --version: print this text and do nothing else.
struct Answer {
    std::string text;
};

using Request = std::variant<Answer, ImportRequest, CheckRequest, dataset::Request, CommandRequest,
                             ViewRequest>;

// Returns whether the word is "import", "view", "check", "convert" or "command".
bool IsCommand(std::string_view word);

// Parses the arguments, which do not include the program's name. Throws UsageError.
Request ParseArguments(std::span<const char* const> arguments);

// Parses "str:TEXT", "bool:true", "word:0x10" or "real:1.5". Throws UsageError.
RawArgument ParseRawArgument(std::string_view text);

// Parses a decimal number, "inf" or "nan". Returns nullopt for any other text.
std::optional<double> ParseNumber(std::string_view text);

}  // namespace cli
