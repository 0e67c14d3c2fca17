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
    return {std::nullopt,
            fmt::format("cannot load the plug-in {}: this program has one linked in", path)};
}

#else

constexpr char kPluginName[] = "libzkmocaputils.so";

std::vector<std::string> AllCandidates() {
    std::vector<std::string> folders;
    Dl_info module{};
    // For any address inside this library, dladdr tells from which file the library was loaded.
    static const char address = 0;
    if (dladdr(&address, &module) != 0 && module.dli_fname && *module.dli_fname == '/')
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

// Returns the path of the first candidate that exists. If none exists, sets `problem` and returns
// an empty text.
std::string FindPlugin(std::string& problem) {
    const std::vector<std::string> candidates = AllCandidates();
    std::error_code unreadable;
    for (const std::string& candidate : candidates)
        if (std::filesystem::exists(candidate, unreadable)) return candidate;
    problem = fmt::format("no plug-in found (--plugin PATH chooses one); looked for\n  {}",
                          fmt::join(candidates, "\n  "));
    return {};
}

LoadedPlugin Load(const std::string& path) {
    LoadedPlugin loaded;
    // dlopen would look for a name without a slash in the system's folders, so the path is made
    // absolute.
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
