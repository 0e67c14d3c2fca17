// The host's automation objects as typed classes: the application as scripts see it, the toolkit of
// user-interface objects and its progress bar. Booleans are automation booleans: 0 is false; -1,
// with all sixteen bits set, is true.
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
    // Sets `interactive` to whether the host has a user. A host that cannot tell leaves it
    // unchanged.
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
    // Sets `pressed` to whether the user has pressed the cancel button. An empty bar leaves it
    // unchanged.
    void GetCancelPressed(std::int16_t& pressed) const;
};

class ZELK_API UIToolkit : public CBase {
  public:
    using CBase::CBase;

    // Fails if the host has no user interface.
    static CStatus Create(UIToolkit& toolkit);
    // Empty if the host has none.
    ProgressBar GetProgressBar() const;
};

}  // namespace Zelk
