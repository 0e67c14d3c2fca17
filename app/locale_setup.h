#pragma once

namespace app {

// The character locale: the environment's, UTF-8 where that has none. Numbers keep the "C" locale.
void SetCharacterLocale();

}  // namespace app
