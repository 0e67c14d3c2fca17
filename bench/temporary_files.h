#pragma once

#include <string>

namespace bench {

// A file in the temporary folder that is removed when the process ends; returns its path.
std::string KeepTemporaryFile(const std::string& name, const std::string& bytes);

}  // namespace bench
