#pragma once

namespace cli {

// Sets the character locale to that of the environment or, where the environment names none that
// knows more than ASCII, to UTF-8. Numbers keep the "C" locale.
void SetCharacterLocale();

}  // namespace cli
