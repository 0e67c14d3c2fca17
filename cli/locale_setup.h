#pragma once

namespace cli {

// Sets the character locale to that of the environment. If the environment's locale does not exist
// or has only ASCII characters, sets it to C.UTF-8. Numbers keep the "C" locale.
void SetCharacterLocale();

}  // namespace cli
