// Imports a BVH file the way any host would: load the plug-in, hand it an argument array, look at
// the scene. Prints the number of objects and the last log line.
#include <cstdio>
#include <dlfcn.h>
#include <string>

#include "headless/session.h"
#include "host/variant.h"
#include "plugin/user_input.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    void* const plugin = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    using Callback = std::int32_t (*)(const wchar_t*, const VARIANT*);
    const auto command = reinterpret_cast<Callback>(dlsym(plugin, "ZelkOnCommand"));
    const auto* const input = static_cast<const USERINPUT*>(dlsym(plugin, "g_UserInput"));
    if (command == nullptr || input == nullptr) return 1;

    const std::string narrow = argv[1];
    const std::wstring path(narrow.begin(), narrow.end());
    VARIANT arguments[6] = {};
    arguments[0].bstrVal = path.c_str();
    arguments[2].boolVal = 0xFFFF;
    if (command(L"Biovision Import function", arguments) != 0 || !input->bUseNulls) return 1;

    const headless::Session& session = headless::Session::Current();
    std::printf("%zu objects\n%ls\n", session.GetScene().Objects().size(),
                session.Log().back().text.GetWideString());
    return 0;
}
