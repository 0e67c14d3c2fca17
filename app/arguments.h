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

#include "app/check_request.h"
#include "app/convert/convert_request.h"
#include "export/formats.h"

namespace app {

// The command line makes no sense; says why.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

enum class Progress : std::uint8_t { Auto, On, Off };  // Auto: where stderr is a terminal
enum class SourceFormat : std::uint8_t { Biovision, Acclaim };
enum class Preset : std::uint8_t { Auto, Cmu, None };  // Auto: where the file looks like one
enum class UpAxis : std::uint8_t { Y, Z };

struct OutputRequest {
    std::string path;
    const exporters::Format* format = nullptr;  // by the path's extension
};

struct ImportRequest {
    SourceFormat format = SourceFormat::Biovision;
    std::string file;        // the .bvh or .asf, as the user named it
    std::string motionFile;  // the .amc; empty: none

    bool useNulls = true;
    bool chainFromParentJoint = true;
    bool effectorToLastBone = false;
    bool createGroup = true;
    bool addClip = false;
    bool applyLimits = false;
    std::optional<double> lengthMultiplier;
    Preset preset = Preset::Auto;

    bool asIs = false;     // without a survey: the plug-in's own reading
    bool strict = false;   // a warning of the survey refuses the import too
    std::string encoding;  // of names that are no UTF-8, as iconv names it; empty: none named

    std::vector<OutputRequest> outputs;
    // For exports: the factor on all lengths, the axis that points up in the file, and the take's
    // rate where it is not what the file says.
    double scale = 1.0;
    UpAxis up = UpAxis::Y;
    std::optional<double> framesPerSecond;
    std::optional<double> resampleTo;  // at this rate, instead of the motion's own keys
    bool mesh = true;                  // glTF: with a body
    std::optional<int> digits;         // BVH: places after the decimal point

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

using Request = std::variant<Answer, ImportRequest, CheckRequest, ConvertRequest, CommandRequest>;

// "import", "check", "convert", "command".
bool IsCommand(std::string_view word);

// `arguments` without the program's name. Throws UsageError.
Request ParseArguments(std::span<const char* const> arguments);

// "str:TEXT", "bool:true", "word:0x10", "real:1.5". Throws UsageError.
RawArgument ParseRawArgument(std::string_view text);

// The whole text as a number: decimal, "inf" or "nan".
std::optional<double> ParseNumber(std::string_view text);

}  // namespace app
