// A plug-in for tests of programs that start imports. It never creates an object. The name of the
// imported file chooses what its callback does. For the names "abort" and "segv" it ends the
// process with that signal. For "hang" it never returns. For "slow" it returns after 100
// milliseconds. For every other name it returns at once. If the environment variable
// STAND_IN_THREAD is set, the plug-in starts a thread when it is loaded.
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <cwchar>
#include <thread>
#include <unistd.h>

#include "host/variant.h"
#include "plugin/user_input.h"

namespace {

constexpr timespec kSlow{0, 100'000'000};

bool Says(const wchar_t* path, const wchar_t* word) {
    const wchar_t* name = std::wcsrchr(path, L'/');
    return std::wcsstr(name ? name : path, word) != nullptr;
}

[[maybe_unused]] const bool kHasThread = [] {
    if (!std::getenv("STAND_IN_THREAD")) return false;
    std::thread([] { pause(); }).detach();
    return true;
}();

}  // namespace

USERINPUT g_UserInput;

extern "C" __attribute__((visibility("default"))) std::int32_t ZelkOnCommand(
    const wchar_t*, const VARIANT* arguments) {
    const wchar_t* path = arguments[0].bstrVal;
    if (Says(path, L"abort")) std::abort();
    if (Says(path, L"segv")) {
        std::signal(SIGSEGV, SIG_DFL);
        raise(SIGSEGV);
    }
    while (Says(path, L"hang"))
        pause();
    if (Says(path, L"slow")) nanosleep(&kSlow, nullptr);
    return 0;
}
