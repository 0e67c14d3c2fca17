// Makes each allocation of the importer fail once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>

#include "acclaim/node_names.h"
#include "headless/session.h"
#include "host/status.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"
#include "tests/support/memory/new_operators.h"
#include "tests/support/temporary_folder.h"

// The linker's names for the first and the last address of this program's code. The importer is in
// the program. The host is a shared library, so its allocations do not fail.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker names it.
extern "C" char __executable_start;
extern "C" char etext;

namespace {

std::uint64_t countdown = 0;  // allocations up to the one that fails; 0: none fails

bool FailsFor(const void* caller) {
    const auto* const at = static_cast<const char*>(caller);
    if (countdown == 0 || at < &__executable_start || at > &etext) return false;
    return --countdown == 0;
}

using namespace support;
using testing::IsEmpty;

class AllocationFaults : public testing::TestWithParam<bool> {};

// Makes the n-th allocation fail, for each n until an import needs fewer than n allocations.
TEST_P(AllocationFaults, AreReported) {
    const TemporaryFolder dir;
    const auto path = [&](const char* name, const char* text) {
        const std::string file = dir.Write(name, text);
        return Zelk::CString(std::wstring(file.begin(), file.end()).c_str());
    };
    const Zelk::CString asf = path("a.asf", kSampleAsf);
    const Zelk::CString amc = path("a.amc", kSampleAmc);
    const Zelk::CString name(L"skel");
    std::uint64_t failures = 0;
    for (std::uint64_t allocation = 1;; ++allocation) {
        StartSession(true);
        CAcclaimImport importer;
        importer.SetOptions(GetParam(), true, false, true);
        countdown = allocation;
        failsAllocation = FailsFor;
        Zelk::CStatus status = importer.ImportSkeleton(asf, name);
        const bool isMotion = status.Succeeded();
        if (isMotion) status = importer.ImportMotion(amc, name);
        const bool hasFailed = countdown == 0;
        failsAllocation = nullptr;
        if (!hasFailed) break;
        if (!status.Succeeded()) {
            ++failures;
            const std::string message = Report(importer, status.GetCode()).message;
            const bool isUnreadable =
                message == "Failed to read ASF file. Specify a valid file name" ||
                message == "Failed to read AMC file. Specify a valid file name";
            // Without memory for an end node or for the name of a chain there is a status but no
            // message. The import returns the same status for every failure of its parser.
            const bool isSilent =
                message.empty() && (status.GetCode() == Zelk::status::kOutOfMemory ||
                                    status.GetCode() == Zelk::status::kFail);
            if (!isMotion && importer.WasParsing()) {
                EXPECT_EQ(status.GetCode(), Zelk::status::kFail) << allocation << ": " << message;
            }
            EXPECT_TRUE(isUnreadable || isSilent || message == "Out of memory")
                << allocation << ": " << message;
        }
        EXPECT_THAT(SceneProblems(false), IsEmpty()) << allocation;
        if (HasFailure()) return;
    }
    EXPECT_GT(failures, 50u);
}

INSTANTIATE_TEST_SUITE_P(, AllocationFaults, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

// A name that could not be added is not found, and it can be added later.
TEST(NodeNamesWithoutMemory, KeepTheNamesThatTheyHave) {
    const char* const name = "a name too long for the string's own buffer";
    std::uint64_t refused = 0;
    for (std::uint64_t allocation = 1;; ++allocation) {
        NodeNames names;
        names.Add("known", 1);
        bool isAdded = true;
        countdown = allocation;
        failsAllocation = FailsFor;
        try {
            names.Add(name, 2);
        } catch (const std::bad_alloc&) {
            isAdded = false;
        }
        failsAllocation = nullptr;
        EXPECT_EQ(names.Find(name), isAdded ? 2 : NodeNames::kNone) << allocation;
        EXPECT_EQ(names.Find("KNOWN"), 1u) << allocation;
        if (isAdded) break;
        ++refused;
        names.Add(name, 3);
        EXPECT_EQ(names.Find(name), 3u) << allocation;
    }
    EXPECT_GT(refused, 1u);
}

}  // namespace
