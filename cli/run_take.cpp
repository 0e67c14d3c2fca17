#include "cli/run_take.h"

#include <chrono>

#include "cli/amc_values.h"
#include "cli/import_show.h"
#include "cli/standard_input.h"
#include "files/system_storage.h"
#include "take/thread_limit.h"

namespace cli {
namespace {

ShowOptions ShowOptionsOf(const ImportRequest& request) {
    ShowOptions options;
    options.progress = request.progress;
    options.drawBar = !request.quiet || request.progress == Progress::On;
    options.errorsOnly = request.quiet;
    options.showFindings = !request.report;
    options.file = request.take.file.path;
    if (request.take.motion) options.motionFile = request.take.motion->path;
    options.kind.emplace();
    options.kind->format = request.take.format;
    options.kind->useNulls = request.take.useNulls;
    if (request.take.motion && DrawsBar(options))
        options.kind->amcValues = EstimateAmcValues(*request.take.motion);
    return options;
}

}  // namespace

TakeRun RunTake(const ImportRequest& request) {
    TakeRun run;
    run.take = request.take;
    const take::LoadedPlugin loaded = take::LoadPlugin(request.plugin);
    if (!loaded.plugin) throw PluginError(loaded.problem);
    // "zkhost convert" runs several imports at a time. Each of them has a processor of its own.
    if (request.threads)
        take::LimitThreads(*request.threads);
    else if (request.report && !take::IsThreadCountSet())
        take::LimitThreads(1);
    const ShowOptions options = ShowOptionsOf(request);
    run.drawsBar = DrawsBar(options);
    ImportShow show(options);
    run.take.hasProgressBar = show.HasProgressBar();
    // Until the end of the survey, a signal ends the process.
    LoadStandardInput(run.take.file);
    if (run.take.motion) LoadStandardInput(*run.take.motion);
    files::SystemStorage storage(true);
    const auto start = std::chrono::steady_clock::now();
    run.result = take::Import(*loaded.plugin, run.take, storage, show.BuildListener());
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    run.loadMilliseconds = took.count();
    return run;
}

}  // namespace cli
