#pragma once

#include <set>
#include <string>

namespace sweep {

// Every text in the plug-in's sources: what an error line says is one of them.
const std::set<std::string>& KnownMessages();

}  // namespace sweep
