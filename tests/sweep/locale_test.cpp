// Imports under a locale that writes numbers with a comma.
#include "tests/support/core/comma_locale.h"
#include "tests/sweep/sweep.h"

namespace sweep {
namespace {

using CommaLocaleImport = Sweep;

TEST_P(CommaLocaleImport, IsTheSameToTheLastBit) {
    const support::CommaLocale locale;
    if (!locale.Problem().empty()) GTEST_SKIP() << locale.Problem();
    ExpectNextImportUnharmed();
}

INSTANTIATE_TEST_SUITE_P(, CommaLocaleImport, testing::ValuesIn(Samples()), SampleName);

}  // namespace
}  // namespace sweep
