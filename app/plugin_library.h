// The plug-in, loaded as any host would load it: known by its two exports alone.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/variant.h"
#include "plugin/user_input.h"

namespace app {

// No plug-in could be loaded; says what was tried.
class PluginError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Where a plug-in is looked for when none is named: beside the executable in `executableFolder`,
// then in the library folders of a build or install tree around it.
std::vector<std::string> PluginCandidates(const std::string& executableFolder);

// Stays loaded until the end of the process: what it made may refer to its code.
class PluginLibrary {
  public:
    // `path` empty: the first that exists of the candidates around this executable. PluginError
    // when there is none, when it cannot be loaded or lacks an export.
    explicit PluginLibrary(const std::string& path);

    // `arguments`: at least as many records as the command reads.
    std::int32_t OnCommand(const wchar_t* name, const VARIANT* arguments) const;
    const USERINPUT& UserInput() const { return *userInput_; }

  private:
    std::int32_t (*onCommand_)(const wchar_t*, const VARIANT*) = nullptr;
    const USERINPUT* userInput_ = nullptr;
};

}  // namespace app
