// What the sweeps have in common: a disturbed import, what must hold of it, and that the next one
// does not notice.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/core/scene_check.h"
#include "tests/sweep/sample_run.h"

namespace sweep {

// What an import without memory says. A skeleton of bones for which there is none says nothing.
inline const char* const kMessagesWithoutMemory[] = {
    "Out of memory",
    "",
    "Failed to read BVH file. Specify a valid file name",
    "Failed to read ASF file. Specify a valid file name",
    "Failed to read AMC file. Specify a valid file name",
};

class Sweep : public testing::TestWithParam<Sample> {
  protected:
    Sweep() : run_(GetParam()) {
        run_.Start();
        run_.Call();
        undisturbed_ = SampleRun::Record();
        EXPECT_THAT(LoggedErrors(), testing::IsEmpty());
    }

    // What is wrong with the scene. Where a cut file numbers its frames, key times are what it
    // says.
    static std::vector<std::string> Problems(bool imported) {
        std::vector<std::string> problems = support::SceneProblems(imported);
        std::erase_if(problems, [](const std::string& problem) {
            return GetParam().isAcclaim && problem.starts_with("the key times of ");
        });
        return problems;
    }

    // After each disturbance: `run_` is as it was, and imports as it did.
    void ExpectNextImportUnharmed() {
        ++disturbances_;
        run_.Start();
        run_.Call();
        // Not compared by the framework, which would print both for every step.
        EXPECT_TRUE(SampleRun::Record() == undisturbed_) << "the next import is another:\n"
                                                         << SampleRun::Record();
    }

    void TearDown() override { RecordProperty("disturbances", disturbances_); }

    SampleRun run_;
    std::string undisturbed_;

  private:
    int disturbances_ = 0;
};

inline std::string SampleName(const testing::TestParamInfo<Sample>& row) {
    return row.param.name;
}

}  // namespace sweep
