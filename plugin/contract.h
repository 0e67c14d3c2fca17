// The contract between the plug-in and its host: what the plug-in exports, the arguments of its
// commands, and the log lines from which a host learns the outcome of an import.
//
// A host loads the library, looks up the two exports, fills an array of VARIANT records and calls
// the callback with a command's name. The callback returns 0 even for an import that failed; only
// the lines that it logs tell the outcome.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "host/constants.h"
#include "host/variant.h"
#include "plugin/user_input.h"

namespace plugin {

// --- The exports ---

inline constexpr char kCallbackSymbol[] = "ZelkOnCommand";  // of type Callback, extern "C"
inline constexpr char kUserInputSymbol[] = "g_UserInput";   // a USERINPUT

// Runs a command. `name` is compared exactly. `arguments` belong to the caller and are only used
// during the call; their number is not checked. Returns 0 for a known command, whatever the outcome
// of the import. For any other name it returns Zelk::status::kFail, and reads and changes nothing.
// Call it from one thread at a time.
using Callback = std::int32_t (*)(const wchar_t* name, const VARIANT* arguments);

// --- The commands ---

inline constexpr wchar_t kBiovisionCommand[] = L"Biovision Import function";
inline constexpr wchar_t kAcclaimCommand[] = L"Acclaim Import function";

// The indexes of each command's arguments. USERINPUT says what they mean.
namespace biovision {

enum Argument : std::size_t {
    kFile = 0,  // text
    kAddClip = 1,
    kUseNulls = 2,
    kChainFromParentJoint = 3,
    kEffectorToLastBone = 4,
    kCreateGroup = 5,
};
// How many records the command reads.
inline constexpr std::size_t kArgumentCount = 6;

}  // namespace biovision

namespace acclaim {

enum Argument : std::size_t {
    kSkeletonFile = 0,  // text
    kMotionFile = 1,    // text, empty for the skeleton alone
    kApplyLimits = 2,
    kOverrideLength = 3,
    kLengthMultiplier = 4,  // a real number
    kAddClip = 5,
    kUseNulls = 6,
    kChainFromParentJoint = 7,
    kEffectorToLastBone = 8,
    kCreateGroup = 9,
};
// How many records the command reads.
inline constexpr std::size_t kArgumentCount = 10;

}  // namespace acclaim

// All arguments without a type above are booleans. They are true if VARIANT::boolVal is kTrue, and
// false if it has any other value.
inline constexpr std::uint16_t kTrue = 0xFFFF;
inline constexpr std::uint16_t kFalse = 0;

constexpr std::uint16_t BooleanWord(bool value) {
    return value ? kTrue : kFalse;
}

// The values of VARIANT::vt for the types of arguments. The commands do not read VARIANT::vt.
enum VariantType : std::uint16_t {
    kRealType = 5,
    kTextType = 8,
    kBooleanType = 11,
    kWordType = 18,
};

// --- The log ---
// The predicates are given a line as it was logged. `severity` is empty for a line that was logged
// with the host's default severity.

inline constexpr std::wstring_view kErrorStart = L"ERROR";
// The start of a log line that reports an error in a file. After it, the log line contains the line
// number in the file (counted from 1), then "): ", then the message.
inline constexpr std::wstring_view kErrorLineStart = L"ERROR (LINE ";
inline constexpr std::wstring_view kMissingFileName = L"File name not specified";
inline constexpr std::wstring_view kCancelEnd = L": User cancelled command";
inline constexpr std::wstring_view kCountStart = L"Imported ";
inline constexpr std::wstring_view kCountEndOfOne = L" model successfully";
inline constexpr std::wstring_view kCountEnd = L" models successfully";

// Whether the line reports a failure. If a Biovision import fails after it finished at least one
// model, the next line says how many models were finished. If the documentation of an Acclaim
// skeleton begins with "ERROR", it is mistaken for an error.
constexpr bool IsErrorLine(std::optional<std::int32_t> severity, std::wstring_view text) {
    if (!severity || *severity == Zelk::zkWarningSeverity) return false;
    return text.starts_with(kErrorStart) || text == kMissingFileName;
}

// Whether the line is the error of an import that the user cancelled.
constexpr bool IsCancelLine(std::optional<std::int32_t> severity, std::wstring_view text) {
    return IsErrorLine(severity, text) && text.ends_with(kCancelEnd);
}

// The number of models in the last line of a Biovision import; empty for other lines.
constexpr std::optional<std::size_t> CountedModels(std::optional<std::int32_t> severity,
                                                   std::wstring_view text) {
    if (severity != Zelk::zkInfoSeverity || !text.starts_with(kCountStart)) return std::nullopt;
    text.remove_prefix(kCountStart.size());
    std::size_t count = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= L'0' && text[digits] <= L'9'; ++digits)
        count = count * 10 + static_cast<std::size_t>(text[digits] - L'0');
    text.remove_prefix(digits);
    if (digits == 0 || (text != kCountEndOfOne && text != kCountEnd)) return std::nullopt;
    return count;
}

// Whether the lines after this one are about the motion of an Acclaim import. When the skeleton has
// been imported, its documentation is logged, even if it is empty. It is the first line that is
// logged with zkInfoSeverity.
constexpr bool EndsSkeleton(std::optional<std::int32_t> severity) {
    return severity == Zelk::zkInfoSeverity;
}

}  // namespace plugin
