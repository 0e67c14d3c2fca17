// One import of a sample by the real plug-in, and everything that it produced.
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

    // Starts a new interactive session. A test can set faults between Start and Call.
    void Start() const;
    // Runs the command and returns the callback's result.
    std::uint32_t Call() const;
    // From now on, the files are the first `first` and `second` bytes of the sample's files.
    void Cut(std::size_t first, std::size_t second);

    // An address inside the plug-in.
    static const void* PluginAddress();
    // Everything that a host could see: log, bar, commands and the scene, to the last bit.
    static std::string Record();

  private:
    const Sample& sample_;
    support::TemporaryFolder folder_;
    plugin_test::Arguments arguments_;  // made beforehand, so that Call allocates nothing itself
};

// The messages of the import: the texts after "ERROR: " and "ERROR (LINE n): " in the log.
std::vector<std::string> LoggedErrors();

// What is wrong with the log; empty if it has only lines that an import of the sample may log. If
// `lineLost`, lines may be missing.
std::string LogProblem(const Sample& sample, bool lineLost);

}  // namespace sweep
