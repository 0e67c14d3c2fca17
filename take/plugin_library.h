// The plug-in as a host uses it: through its two exports alone. It is loaded from its file or, in a
// build with ZKMOCAP_STATIC_PLUGIN, linked into the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plugin/contract.h"
#include "text/api.h"

namespace take {

// The two exports. May be copied. The library stays loaded until the process ends, because objects
// that it made may refer to its code.
class Plugin {
  public:
    Plugin(plugin::Callback callback, const USERINPUT& userInput)
        : callback_(callback), userInput_(&userInput) {}

    // `arguments` has at least as many records as the command reads (plugin/contract.h).
    std::int32_t Call(const wchar_t* name, const VARIANT* arguments) const {
        return callback_(name, arguments);
    }
    // The arguments of the last call.
    const USERINPUT& UserInput() const { return *userInput_; }

  private:
    plugin::Callback callback_;
    const USERINPUT* userInput_;
};

struct LoadedPlugin {
    std::optional<Plugin> plugin;
    std::string
        problem;  // why there is no plug-in, and which files were tried; empty: there is one
};

// Loads the plug-in from `path`. With an empty path it returns the plug-in that is linked in or, in
// other builds, loads the first PluginCandidates file that exists: first around the library that
// contains this function, then around the executable.
ZKMOCAP_API LoadedPlugin LoadPlugin(const std::string& path = {});

// Returns the paths where a plug-in is looked for around `folder`: in the folder itself, then in
// the library folders of a build tree or an install tree that the folder belongs to.
std::vector<std::string> PluginCandidates(const std::string& folder);

}  // namespace take
