#pragma once

#include <string>

namespace bench {

// Writes a file in the temporary folder and returns its path. The file is removed when the process
// exits normally.
std::string KeepTemporaryFile(const std::string& name, const std::string& bytes);

}  // namespace bench
