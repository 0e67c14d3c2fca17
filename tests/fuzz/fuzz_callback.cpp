#include <dlfcn.h>
#include <stdexcept>

#include "plugin/contract.h"
#include "tests/fuzz/callback_check.h"
#include "tests/fuzz/target.h"

namespace {

// Loads the plug-in as a host does.
plugin::Callback LoadCallback() {
    void* const library = dlopen(ZKMOCAP_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
    void* const symbol = dlsym(library, plugin::kCallbackSymbol);
    if (symbol == nullptr) throw std::runtime_error(dlerror());
    return reinterpret_cast<plugin::Callback>(symbol);
}

void Check(std::string_view input) {
    static const plugin::Callback callback = LoadCallback();
    fuzz::CheckCallback(callback, input);
}

fuzz::Grammar GrammarOf(std::string_view input) {
    const bool isBvh = !input.empty() && static_cast<unsigned char>(input[0]) % 5 == 0;
    return isBvh ? fuzz::Grammar::Bvh : fuzz::Grammar::Acclaim;
}

}  // namespace

// The first 24 bytes choose the command and the arguments.
const fuzz::Target fuzz::kTarget = {Check, 24, GrammarOf};
