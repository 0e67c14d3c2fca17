#include "mocap/progress_bar.h"

#include <limits>
#include <new>

namespace {

constexpr std::int32_t kHostMinimum = 0;
constexpr std::int32_t kHostMaximum = 32000;
constexpr std::int32_t kHostStep = 1;

// Truncates towards zero. For a NaN, and for a value that does not fit into 32 bits, returns the
// smallest integer, as the x86 instruction does.
std::int32_t Truncate(double value) {
    constexpr auto kSmallest = std::numeric_limits<std::int32_t>::min();
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<std::int32_t>(value) : kSmallest;
}

bool IsInteractive() {
    // If the host does not set the value, the session counts as interactive.
    std::int16_t interactive = Zelk::kAutomationTrue;
    Zelk::AutomationApplication().GetInteractive(interactive);
    return interactive == Zelk::kAutomationTrue;
}

Zelk::ProgressBar HostBar() {
    Zelk::UIToolkit toolkit;
    if (!IsInteractive() || !Zelk::UIToolkit::Create(toolkit).Succeeded()) return {};
    return toolkit.GetProgressBar();
}

}  // namespace

CIFPlugProgressBar::CIFPlugProgressBar() : bar(HostBar()), hasBar(bar.IsValid()) {
    if (!hasBar) return;
    bar.PutMinimum(kHostMinimum);
    bar.PutMaximum(kHostMaximum);
    bar.PutStep(kHostStep);
}

CIFPlugProgressBar::~CIFPlugProgressBar() {
    try {
        Hide();
    } catch (const std::bad_alloc&) {
        // The host had no memory to hide its bar. The import itself may have ended because memory
        // ran out. A destructor must not throw, so the error is ignored.
    }
}

void CIFPlugProgressBar::Show() {
    if (bar.IsValid()) bar.PutVisible(Zelk::kAutomationTrue);
}

void CIFPlugProgressBar::Hide() {
    if (bar.IsValid()) bar.PutVisible(Zelk::kAutomationFalse);
}

void CIFPlugProgressBar::SetRange(unsigned int newRange) {
    range = newRange;
}

void CIFPlugProgressBar::Advance(unsigned int step) {
    if (!bar.IsValid()) return;
    position += step;
    const double share = static_cast<double>(position) / static_cast<double>(range);
    bar.PutValue(Truncate(share * kHostMaximum + 0.5));
}

void CIFPlugProgressBar::Reset() {
    if (!bar.IsValid()) return;
    position = 0;
    bar.PutValue(0);
}

void CIFPlugProgressBar::SetText(const Zelk::CString& text) {
    if (bar.IsValid()) bar.PutCaption(text);
}

bool CIFPlugProgressBar::IsCancelled() {
    if (!hasBar || !bar.IsValid()) return false;
    std::int16_t pressed = 0;
    bar.GetCancelPressed(pressed);
    return pressed == Zelk::kAutomationTrue;
}
