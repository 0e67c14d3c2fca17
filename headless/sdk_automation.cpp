#include <utility>

#include "headless/operations.h"
#include "headless/session_state.h"
#include "host/automation.h"

namespace Zelk {

using headless::BarEvent;
using headless::Fails;
using headless::Operation;
using headless::SessionAccess;

namespace {

void RecordEvent(const ProgressBar& bar, Operation operation, BarEvent event) {
    if (Fails(operation) || !bar.IsValid()) return;
    SessionAccess::Current().AddBar(std::move(event));
}

}  // namespace

void AutomationApplication::GetInteractive(std::int16_t& interactive) const {
    if (Fails(Operation::GetInteractive)) return;
    interactive = SessionAccess::Current().interactive ? kAutomationTrue : kAutomationFalse;
}

void AutomationApplication::LogMessage(const CString& message) {
    if (Fails(Operation::LogMessage)) return;
    SessionAccess::Current().AddLog({std::nullopt, message});
}

CStatus UIToolkit::Create(UIToolkit& toolkit) {
    if (Fails(Operation::Create) || !SessionAccess::Current().interactive) return status::kFail;
    toolkit = UIToolkit(CRef(headless::kInterfaceId, headless::part::kToolkit));
    return status::kOk;
}

ProgressBar UIToolkit::GetProgressBar() const {
    if (Fails(Operation::GetProgressBar) || !IsValid()) return ProgressBar();
    return ProgressBar(CRef(headless::kInterfaceId, headless::part::kProgressBar));
}

// These functions do not change the handle, but they change what the bar shows. So they are not
// const.
// NOLINTBEGIN(readability-make-member-function-const)
void ProgressBar::PutMinimum(std::int32_t value) {
    RecordEvent(*this, Operation::PutMinimum, {BarEvent::Kind::Minimum, value, {}});
}

void ProgressBar::PutMaximum(std::int32_t value) {
    RecordEvent(*this, Operation::PutMaximum, {BarEvent::Kind::Maximum, value, {}});
}

void ProgressBar::PutStep(std::int32_t value) {
    RecordEvent(*this, Operation::PutStep, {BarEvent::Kind::Step, value, {}});
}

void ProgressBar::PutValue(std::int32_t value) {
    RecordEvent(*this, Operation::PutValue, {BarEvent::Kind::Value, value, {}});
}

void ProgressBar::PutCaption(const CString& text) {
    RecordEvent(*this, Operation::PutCaption, {BarEvent::Kind::Caption, 0, text});
}

void ProgressBar::PutVisible(std::int16_t visible) {
    RecordEvent(*this, Operation::PutVisible, {BarEvent::Kind::Visible, visible != 0 ? 1 : 0, {}});
}
// NOLINTEND(readability-make-member-function-const)

void ProgressBar::GetCancelPressed(std::int16_t& pressed) const {
    if (Fails(Operation::GetCancelPressed) || !IsValid()) return;
    pressed = SessionAccess::Current().ReadCancelFlag();
}

}  // namespace Zelk
