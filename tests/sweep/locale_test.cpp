// Imports the samples in a locale that writes numbers with a comma.
#include <memory>
#include <string>
#include <vector>

#include "tests/support/core/comma_locale.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

struct SampleRecord {
    const Sample* sample;
    std::unique_ptr<SampleRun> run;
    std::string record;
};

// It takes two seconds to make the locale, so all samples are imported in one test.
TEST(CommaLocaleImport, IsTheSameToTheLastBit) {
    const std::vector<Sample>& samples = Samples();
    std::vector<SampleRecord> runs;
    for (const Sample& sample : samples) {
        auto run = std::make_unique<SampleRun>(sample);
        run->Start();
        run->Call();
        std::string record = SampleRun::Record();
        runs.push_back({&sample, std::move(run), std::move(record)});
    }
    const support::CommaLocale locale;
    if (!locale.Problem().empty()) GTEST_SKIP() << locale.Problem();
    for (const auto& [sample, run, record] : runs) {
        run->Start();
        run->Call();
        // EXPECT_EQ is not used, because it would print both records.
        EXPECT_TRUE(SampleRun::Record() == record) << sample->name << ":\n" << SampleRun::Record();
    }
}

}  // namespace
}  // namespace sweep
