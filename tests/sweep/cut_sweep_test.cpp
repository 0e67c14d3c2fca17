// Repeats an import; each time one of its files ends after another byte.
#include "tests/sweep/known_messages.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

class CutSweep : public Sweep {
  protected:
    void RunCut(std::size_t first, std::size_t second) {
        run_.Cut(first, second);
        run_.Start();
        run_.Call();
        EXPECT_EQ(LogProblem(GetParam(), false), "");
        const auto errors = LoggedErrors();
        EXPECT_THAT(Problems(errors.empty()), testing::IsEmpty());
        for (const std::string& error : errors)
            EXPECT_EQ(KnownMessages().count(error), 1u) << error;
        failures_ += errors.empty() ? 0 : 1;

        run_.Cut(GetParam().first.size(), GetParam().second.size());
        ExpectNextImportUnharmed();
    }

    std::size_t failures_ = 0;
};

TEST_P(CutSweep, IsSurvivedAndReported) {
    const std::size_t first = GetParam().first.size();
    const std::size_t second = GetParam().second.size();
    for (std::size_t n = 0; n < first && !HasFailure(); ++n) {
        SCOPED_TRACE("first file, byte " + std::to_string(n));
        RunCut(n, second);
    }
    for (std::size_t n = 0; n < second && !HasFailure(); ++n) {
        SCOPED_TRACE("second file, byte " + std::to_string(n));
        RunCut(first, n);
    }
    EXPECT_GT(failures_, (first + second) / 4);
}

INSTANTIATE_TEST_SUITE_P(, CutSweep, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
