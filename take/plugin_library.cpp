#include "take/plugin_library.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <system_error>

#include "text/path_text.h"

#ifdef ZKMOCAP_STATIC_PLUGIN
extern "C" std::int32_t ZelkOnCommand(const wchar_t* name, const VARIANT* arguments);
#else
#include <dlfcn.h>
#endif

namespace take {
namespace {

#ifdef ZKMOCAP_STATIC_PLUGIN

LoadedPlugin Load(const std::string& path) {
    if (path.empty()) return {Plugin(ZelkOnCommand, g_UserInput), {}};
    return {std::nullopt, fmt::format("cannot load the plug-in: {}: one is linked in", path)};
}

#else

constexpr char kPluginName[] = "libzkmocaputils.so";

std::vector<std::string> AllCandidates() {
    std::vector<std::string> folders;
    Dl_info module{};
    static const char here = 0;
    if (dladdr(&here, &module) != 0 && module.dli_fname && *module.dli_fname == '/')
        folders.emplace_back(text::FolderPart(module.dli_fname));
    std::error_code unreadable;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", unreadable);
    if (!unreadable) folders.push_back(executable.parent_path().string() + '/');
    if (folders.size() == 2 && folders[0] == folders[1]) folders.pop_back();
    std::vector<std::string> candidates;
    for (std::string& folder : folders) {
        folder.pop_back();
        const std::vector<std::string> more = PluginCandidates(folder);
        candidates.insert(candidates.end(), more.begin(), more.end());
    }
    return candidates;
}

// Returns the file, or why there is none in `problem`.
std::string FindPlugin(std::string& problem) {
    const std::vector<std::string> candidates = AllCandidates();
    std::error_code unreadable;
    for (const std::string& candidate : candidates)
        if (std::filesystem::exists(candidate, unreadable)) return candidate;
    problem = fmt::format("no plug-in found (--plugin names one); looked for\n  {}",
                          fmt::join(candidates, "\n  "));
    return {};
}

LoadedPlugin Load(const std::string& path) {
    LoadedPlugin loaded;
    // Absolute, since a bare name would be looked for in the system's folders.
    std::error_code unreadable;
    const std::string file = path.empty() ? FindPlugin(loaded.problem)
                                          : std::filesystem::absolute(path, unreadable).string();
    if (!loaded.problem.empty()) return loaded;
    void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        loaded.problem = fmt::format("cannot load the plug-in: {}", dlerror());
        return loaded;
    }
    void* const callback = dlsym(library, plugin::kCallbackSymbol);
    void* const userInput = dlsym(library, plugin::kUserInputSymbol);
    if (!callback || !userInput)
        loaded.problem = fmt::format("{} is not a plug-in: it lacks {}", file,
                                     callback ? plugin::kUserInputSymbol : plugin::kCallbackSymbol);
    else
        loaded.plugin.emplace(reinterpret_cast<plugin::Callback>(callback),
                              *static_cast<const USERINPUT*>(userInput));
    return loaded;
}

#endif

}  // namespace

LoadedPlugin LoadPlugin(const std::string& path) {
    return Load(path);
}

std::vector<std::string> PluginCandidates(const std::string& folder) {
#ifdef ZKMOCAP_STATIC_PLUGIN
    static_cast<void>(folder);
    return {};
#else
    return {fmt::format("{}/{}", folder, kPluginName),
            fmt::format("{}/../lib/{}", folder, kPluginName),
            fmt::format("{}/{}/{}", folder, ZKMOCAP_LIBRARY_FOLDER, kPluginName)};
#endif
}

}  // namespace take
