#include "app/outcome.h"

#include <cwchar>
#include <string_view>

#include "headless/text.h"

namespace app {
namespace {

constexpr std::wstring_view kErrorStart = L"ERROR";
constexpr std::wstring_view kNoFileName = L"File name not specified";
constexpr std::wstring_view kCancelEnd = L": User cancelled command";
constexpr std::wstring_view kCountStart = L"Imported ";
constexpr std::wstring_view kCountEnds[] = {L" model successfully", L" models successfully"};

bool IsCancel(const headless::LogLine& line) {
    return IsError(line) && headless::View(line.text).ends_with(kCancelEnd);
}

// "Imported 2 models successfully"
std::optional<std::size_t> CountedModels(const headless::LogLine& line) {
    std::wstring_view text = headless::View(line.text);
    if (!text.starts_with(kCountStart)) return std::nullopt;
    text.remove_prefix(kCountStart.size());
    std::size_t count = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= L'0' && text[digits] <= L'9'; ++digits)
        count = count * 10 + static_cast<std::size_t>(text[digits] - L'0');
    text.remove_prefix(digits);
    if (digits == 0 || (text != kCountEnds[0] && text != kCountEnds[1])) return std::nullopt;
    return count;
}

}  // namespace

bool IsError(const headless::LogLine& line) {
    const std::wstring_view text = headless::View(line.text);
    return text.starts_with(kErrorStart) || text == kNoFileName;
}

Outcome JudgeImport(std::int32_t result, const std::vector<headless::LogLine>& log,
                    bool interrupted) {
    Outcome outcome;
    bool failed = result != 0;
    bool cancelled = interrupted;
    bool countAfterError = false;
    for (const headless::LogLine& line : log) {
        if (IsError(line)) {
            failed = true;
            cancelled = cancelled || IsCancel(line);
            countAfterError = false;
        } else if (const auto models = CountedModels(line)) {
            outcome.models = models;
            countAfterError = failed;
        }
    }
    if (cancelled)
        outcome.status = kCancelled;
    else if (failed)
        outcome.status = countAfterError ? kImportedInPart : kImportFailed;
    return outcome;
}

}  // namespace app
