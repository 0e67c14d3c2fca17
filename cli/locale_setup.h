#pragma once

namespace cli {

// The character locale: the environment's, UTF-8 where that has none. Numbers keep the "C" locale.
void SetCharacterLocale();

}  // namespace cli
