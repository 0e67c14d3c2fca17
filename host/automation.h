// The host's automation objects as typed classes: the application as scripts see it, the toolkit
// that creates user-interface objects, and the toolkit's progress bar. A boolean is an automation
// boolean, which has 16 bits: 0 is false, and -1 is true.
#pragma once

#include <cstdint>

#include "host/export.h"
#include "host/ref.h"
#include "host/status.h"
#include "host/string.h"

namespace Zelk {

inline constexpr std::int16_t kAutomationTrue = -1;
inline constexpr std::int16_t kAutomationFalse = 0;

class ZELK_API AutomationApplication {
  public:
    // Sets `interactive` to true if the host has a user interface, and to false if it has none. A
    // host that cannot tell leaves `interactive` unchanged.
    void GetInteractive(std::int16_t& interactive) const;
    // Adds one line to the log, with the host's default severity.
    void LogMessage(const CString& message);
};

class ZELK_API ProgressBar : public CBase {
  public:
    using CBase::CBase;

    void PutMinimum(std::int32_t value);
    void PutMaximum(std::int32_t value);
    void PutStep(std::int32_t value);
    void PutValue(std::int32_t value);
    void PutCaption(const CString& text);
    void PutVisible(std::int16_t visible);
    // Sets `pressed` to true if the user has pressed the cancel button, and to false if not. An
    // empty handle leaves `pressed` unchanged.
    void GetCancelPressed(std::int16_t& pressed) const;
};

class ZELK_API UIToolkit : public CBase {
  public:
    using CBase::CBase;

    // Fails if the host has no user interface.
    static CStatus Create(UIToolkit& toolkit);
    // The result is empty if the host has no progress bar.
    ProgressBar GetProgressBar() const;
};

}  // namespace Zelk
