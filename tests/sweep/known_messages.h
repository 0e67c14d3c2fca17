#pragma once

#include <set>
#include <string>

namespace sweep {

// Every wide text in the plug-in's sources. The message of an error line must be one of them.
const std::set<std::string>& KnownMessages();

}  // namespace sweep
