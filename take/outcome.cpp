#include "take/outcome.h"

#include "headless/text.h"
#include "plugin/contract.h"

namespace take {

bool IsError(const headless::LogLine& line) {
    return plugin::IsErrorLine(line.severity, headless::View(line.text));
}

Outcome JudgeImport(std::int32_t result, const std::vector<headless::LogLine>& log,
                    bool isCancelled) {
    Outcome outcome;
    bool failed = result != 0;
    bool cancelled = isCancelled;
    bool countAfterError = false;
    for (const headless::LogLine& line : log) {
        const std::wstring_view text = headless::View(line.text);
        if (IsError(line)) {
            failed = true;
            cancelled = cancelled || plugin::IsCancelLine(line.severity, text);
            countAfterError = false;
        } else if (const auto models = plugin::CountedModels(line.severity, text)) {
            outcome.models = models;
            countAfterError = failed;
        }
    }
    if (cancelled)
        outcome.status = Status::Cancelled;
    else if (!failed)
        outcome.status = Status::Imported;
    else if (countAfterError)
        outcome.status = Status::ImportedInPart;
    return outcome;
}

bool LogSubject::IsMotion(const headless::LogLine& line) {
    const bool isMotion = isMotion_;
    if (plugin::EndsSkeleton(line.severity)) isMotion_ = true;
    return isMotion;
}

}  // namespace take
