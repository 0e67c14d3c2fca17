#include "app/plugin_library.h"

#include <dlfcn.h>
#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <system_error>

namespace app {
namespace {

constexpr char kPluginName[] = "libzkmocaputils.so";

std::string FindPlugin() {
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe");
    const std::vector<std::string> candidates = PluginCandidates(executable.parent_path().string());
    std::error_code unreadable;
    for (const std::string& candidate : candidates)
        if (std::filesystem::exists(candidate, unreadable)) return candidate;
    throw PluginError(fmt::format("no plug-in found (--plugin names one); looked for\n  {}",
                                  fmt::join(candidates, "\n  ")));
}

void* LoadedSymbol(void* library, const std::string& path, const char* name) {
    void* symbol = dlsym(library, name);
    if (!symbol) throw PluginError(fmt::format("{} is not a plug-in: it lacks {}", path, name));
    return symbol;
}

}  // namespace

std::vector<std::string> PluginCandidates(const std::string& executableFolder) {
    return {fmt::format("{}/{}", executableFolder, kPluginName),
            fmt::format("{}/../lib/{}", executableFolder, kPluginName),
            fmt::format("{}/{}/{}", executableFolder, ZKHOST_LIBRARY_FOLDER, kPluginName)};
}

PluginLibrary::PluginLibrary(const std::string& path) {
    // Absolute, since a bare name would be looked for in the system's folders.
    const std::string file = path.empty() ? FindPlugin() : std::filesystem::absolute(path).string();
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) throw PluginError(fmt::format("cannot load the plug-in: {}", dlerror()));
    onCommand_ = reinterpret_cast<std::int32_t (*)(const wchar_t*, const VARIANT*)>(
        LoadedSymbol(library, file, "ZelkOnCommand"));
    userInput_ = static_cast<const USERINPUT*>(LoadedSymbol(library, file, "g_UserInput"));
}

std::int32_t PluginLibrary::OnCommand(const wchar_t* name, const VARIANT* arguments) const {
    return onCommand_(name, arguments);
}

}  // namespace app
