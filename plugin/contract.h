// The contract between the plug-in and its host. It defines the exports of the plug-in, the
// arguments of its commands, and the log lines from which a host learns the outcome of an import.
//
// A host loads the library, looks up the two exports, fills an array of VARIANT records and calls
// the callback with a command's name. The callback returns 0 even if the import fails. Only the
// lines that it logs tell the outcome.
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

// A function of the type Callback, declared extern "C".
inline constexpr char kCallbackSymbol[] = "ZelkOnCommand";
// A record of the type USERINPUT.
inline constexpr char kUserInputSymbol[] = "g_UserInput";

// Runs the command `name`. Upper and lower case are distinguished. The caller owns `arguments`.
// They are used only during the call, and their number is not checked. Returns 0 for a known
// command, even if the import fails. For any other name, returns Zelk::status::kFail and does
// nothing. Two threads must not call it at the same time. During the call the plug-in may start
// threads of its own. They call nothing of the host, and end before the function returns. The
// environment variable ZKMOCAP_THREADS says how many threads an import uses, the caller's included;
// without it, one for each processor, but fewer for short files.
using Callback = std::int32_t (*)(const wchar_t* name, const VARIANT* arguments);

// --- The commands ---

inline constexpr wchar_t kBiovisionCommand[] = L"Biovision Import function";
inline constexpr wchar_t kAcclaimCommand[] = L"Acclaim Import function";

// The indices of the arguments of each command, in its array of VARIANT records. The comments in
// USERINPUT say what the arguments mean.
namespace biovision {

enum Argument : std::size_t {
    kFile = 0,  // text
    kAddClip = 1,
    kUseNulls = 2,
    kChainFromParentJoint = 3,
    kEffectorToLastBone = 4,
    kCreateGroup = 5,
};
// The number of VARIANT records that the command reads.
inline constexpr std::size_t kArgumentCount = 6;

}  // namespace biovision

namespace acclaim {

enum Argument : std::size_t {
    kSkeletonFile = 0,  // text
    kMotionFile = 1,    // text; empty if only the skeleton is imported
    kApplyLimits = 2,
    kOverrideLength = 3,
    kLengthMultiplier = 4,  // a real number
    kAddClip = 5,
    kUseNulls = 6,
    kChainFromParentJoint = 7,
    kEffectorToLastBone = 8,
    kCreateGroup = 9,
};
// The number of VARIANT records that the command reads.
inline constexpr std::size_t kArgumentCount = 10;

}  // namespace acclaim

// Every argument that has no comment in the two enumerations above is a boolean. It is true if its
// VARIANT::boolVal is kTrue. With any other value it is false.
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
// The functions below examine one log line. `severity` and `text` are the severity and the text of
// the line. `severity` is empty if the line was logged with the host's default severity.

inline constexpr std::wstring_view kErrorStart = L"ERROR";
// The start of a log line that reports an error in a file. After it, the log line contains the line
// number in the file (counted from 1), then "): ", then the message.
inline constexpr std::wstring_view kErrorLineStart = L"ERROR (LINE ";
inline constexpr std::wstring_view kMissingFileName = L"File name not specified";
inline constexpr std::wstring_view kCancelEnd = L": User cancelled command";
inline constexpr std::wstring_view kCountStart = L"Imported ";
inline constexpr std::wstring_view kCountEndOfOne = L" model successfully";
inline constexpr std::wstring_view kCountEnd = L" models successfully";

// Whether the line reports a failure. If a Biovision import fails after it has completed at least
// one model, the next line says how many models were completed. If the documentation of an Acclaim
// skeleton begins with "ERROR", this function wrongly returns true for it.
constexpr bool IsErrorLine(std::optional<std::int32_t> severity, std::wstring_view text) {
    if (!severity || *severity == Zelk::zkWarningSeverity) return false;
    return text.starts_with(kErrorStart) || text == kMissingFileName;
}

// Whether the line reports that the user cancelled the import.
constexpr bool IsCancelLine(std::optional<std::int32_t> severity, std::wstring_view text) {
    return IsErrorLine(severity, text) && text.ends_with(kCancelEnd);
}

// If the line is the last line of a Biovision import and says how many models were imported,
// returns this number. Returns std::nullopt for all other lines.
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

// Whether this line of an Acclaim import ends the import of the skeleton. The first line for which
// the result is true is the last line about the skeleton. After a successful import, this line is
// the documentation of the skeleton, which may be empty. After a failed import, it is the error.
constexpr bool EndsSkeleton(std::optional<std::int32_t> severity) {
    return severity == Zelk::zkInfoSeverity;
}

}  // namespace plugin
