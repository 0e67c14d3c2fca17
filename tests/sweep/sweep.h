// What the sweeps share: they disturb an import, check its result, and check that the next import
// is not affected.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/core/scene_check.h"
#include "tests/sweep/sample_run.h"

namespace sweep {

// The messages of an import for which memory ran out. The message is empty if it ran out while a
// skeleton of bones was built.
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

    // What is wrong with the scene. The key times of Acclaim samples are not checked: they are the
    // frame numbers in the file, and a cut file may have wrong ones.
    static std::vector<std::string> Problems(bool imported) {
        std::vector<std::string> problems = support::SceneProblems(imported);
        std::erase_if(problems, [](const std::string& problem) {
            return GetParam().isAcclaim && problem.starts_with("the key times of ");
        });
        return problems;
    }

    // To be called after each disturbance: the same import gives the same result as at first.
    void ExpectNextImportUnharmed() {
        ++disturbances_;
        run_.Start();
        run_.Call();
        // EXPECT_EQ is not used, because it would print both records.
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
