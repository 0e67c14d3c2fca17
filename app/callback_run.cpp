#include "app/callback_run.h"

#include <chrono>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <unistd.h>

#include "app/interrupt.h"
#include "app/print.h"
#include "app/progress_line.h"
#include "headless/session.h"

namespace app {
namespace {

constexpr std::chrono::milliseconds kBarInterval{50};

bool CanRedrawLines() {
    const char* terminal = std::getenv("TERM");
    return !terminal || std::string_view(terminal) != "dumb";
}

}  // namespace

CallbackResult RunCallback(const PluginLibrary& plugin, const std::wstring& name,
                           const VariantList& arguments, const CallbackShow& show) {
    const bool terminal = isatty(STDERR_FILENO) != 0;
    const bool interactive =
        show.progress == Progress::On || (show.progress == Progress::Auto && terminal);
    headless::Session& session = headless::Session::Current();
    session.Reset();
    session.SetInteractive(interactive);
    CatchInterrupts(session);

    std::optional<ProgressLine> bar;
    if (interactive && terminal && show.drawBar && CanRedrawLines()) {
        bar.emplace(TerminalColumns(STDERR_FILENO), kBarInterval, ToStderr());
        session.OnBar([&](const headless::BarEvent& event) { bar->Take(event); });
    }
    LogPrinter log(show.file, show.motionFile, {terminal, show.errorsOnly}, ToStderr());
    CallbackResult result;
    session.OnLog([&](const headless::LogLine& line) {
        if (bar) bar->Erase();
        result.log.push_back(show.filter ? show.filter(line) : line);
        log.Print(result.log.back());
    });

    {
        // Without a bar there is no button to press.
        const UncancellableStretch stretch(!interactive);
        const auto start = std::chrono::steady_clock::now();
        result.code = plugin.OnCommand(name.c_str(), arguments.Data());
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - start;
        result.milliseconds = took.count();
    }
    session.OnBar(nullptr);
    session.OnLog(nullptr);
    return result;
}

}  // namespace app
