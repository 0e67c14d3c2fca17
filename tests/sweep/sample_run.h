// One import of a sample by the real plug-in, and all that came of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/plugin/plugin_library.h"
#include "tests/support/temporary_folder.h"
#include "tests/sweep/samples.h"

namespace sweep {

class SampleRun {
  public:
    explicit SampleRun(const Sample& sample);

    // Runs the command in a new interactive session. `prepare` the session with faults between
    // Start and Call.
    void Start() const;
    // What the callback returned.
    std::uint32_t Call() const;
    // The files hold so many bytes of the sample's from now on.
    void Cut(std::size_t first, std::size_t second);

    // An address inside the plug-in.
    static const void* PluginAddress();
    // Everything that a host could see: log, bar, commands and the scene, to the last bit.
    static std::string Record();

  private:
    const Sample& sample_;
    support::TemporaryFolder folder_;
    plugin_test::Arguments arguments_;  // made ahead: a call takes no memory of the test's
};

// The import's messages: what stands behind "ERROR: " and "ERROR (LINE n): " in the log.
std::vector<std::string> LoggedErrors();

// What is wrong with the log, beyond what any import may log; empty where nothing is. A line was
// lost where `lineLost`.
std::string LogProblem(const Sample& sample, bool lineLost);

}  // namespace sweep
