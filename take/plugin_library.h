// Loads the plug-in. It is loaded from a file or, in a build with ZKMOCAP_STATIC_PLUGIN, linked
// into the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plugin/contract.h"
#include "text/api.h"

namespace take {

// The two exports of the plug-in, which are all that a host uses of it. Copies refer to the same
// plug-in. Its library stays loaded until the process ends, because objects that the plug-in made
// may refer to its code.
class Plugin {
  public:
    Plugin(plugin::Callback callback, const USERINPUT& userInput)
        : callback_(callback), userInput_(&userInput) {}

    // `arguments` has at least as many records as the command reads (plugin/contract.h).
    std::int32_t Call(const wchar_t* name, const VARIANT* arguments) const {
        return callback_(name, arguments);
    }
    // The plug-in's record of the arguments of the last call. The next call changes it.
    const USERINPUT& UserInput() const { return *userInput_; }

  private:
    plugin::Callback callback_;
    const USERINPUT* userInput_;
};

struct LoadedPlugin {
    std::optional<Plugin> plugin;
    std::string problem;  // why the plug-in could not be loaded; empty if it was loaded
};

// Loads the plug-in from `path`. If the path is empty, it loads the first of the PluginCandidates
// that exists. The candidates for the folder of the library that contains this function come first,
// then those for the folder of the executable. In a build with ZKMOCAP_STATIC_PLUGIN, an empty path
// returns the linked plug-in, and any other path is a problem.
ZKMOCAP_API LoadedPlugin LoadPlugin(const std::string& path = {});

// Returns three paths at which a plug-in may be. The first is in `folder`, the second in the folder
// "lib" next to `folder`. The third is in the folder to which the path from `folder` is the same as
// the path from the installed programs to the installed libraries. Returns nothing in a build with
// ZKMOCAP_STATIC_PLUGIN.
std::vector<std::string> PluginCandidates(const std::string& folder);

}  // namespace take
