// The plug-in, known by its two exports alone: loaded as any host would load it or, in a build with
// ZKMOCAP_STATIC_PLUGIN, linked in.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plugin/contract.h"
#include "text/api.h"

namespace take {

// Stays loaded until the end of the process: what it made may refer to its code. May be copied.
class Plugin {
  public:
    Plugin(plugin::Callback callback, const USERINPUT& userInput)
        : callback_(callback), userInput_(&userInput) {}

    // `arguments`: at least as many records as the command reads (plugin/contract.h).
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
    std::string problem;  // why there is none, and what was tried
};

// `path` empty: the one that is linked in, or the first that exists of the candidates around the
// library that this function is in, then around the executable.
ZKMOCAP_API LoadedPlugin LoadPlugin(const std::string& path = {});

// Where a plug-in is looked for when none is named: in `folder`, then in the library folders of a
// build or install tree around it.
std::vector<std::string> PluginCandidates(const std::string& folder);

}  // namespace take
