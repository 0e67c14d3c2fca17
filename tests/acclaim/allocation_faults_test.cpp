// Each allocation of the importer failing once, at every place that it allocates.
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>

#include "headless/session.h"
#include "host/status.h"
#include "tests/support/acclaim/open_importer.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

// The first and last address of this program, by the linker. What the program links statically is
// the importer; the host is a library, whose allocations are its own.
extern "C" char __executable_start;
extern "C" char etext;

namespace {

std::uint64_t countdown = 0;  // allocations until the one that fails; 0: none does

bool FailsFor(const void* caller) {
    const auto* const at = static_cast<const char*>(caller);
    if (countdown == 0 || at < &__executable_start || at > &etext) return false;
    return --countdown == 0;
}

void* Allocate(std::size_t size) {
    return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = FailsFor(__builtin_return_address(0)) ? nullptr : Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new[](std::size_t size) {
    void* const memory = FailsFor(__builtin_return_address(0)) ? nullptr : Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return FailsFor(__builtin_return_address(0)) ? nullptr : Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return FailsFor(__builtin_return_address(0)) ? nullptr : Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using namespace support;
using testing::IsEmpty;

class AllocationFaults : public testing::TestWithParam<bool> {};

// Fails the n-th allocation, n counted up until none is left to fail.
TEST_P(AllocationFaults, AreReported) {
    const TempDir dir;
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
        OpenImporter importer;
        importer.SetOptions(GetParam(), true, false, true);
        countdown = allocation;
        Zelk::CStatus status = importer.ImportSkeleton(asf, name);
        const bool isMotion = status.Succeeded();
        if (isMotion) status = importer.ImportMotion(amc, name);
        const bool hasFailed = countdown == 0;
        countdown = 0;
        if (!hasFailed) break;
        if (!status.Succeeded()) {
            ++failures;
            const std::string message = importer.Report(status.GetCode()).message;
            const bool isFile = message == "Failed to read ASF file. Specify a valid file name" ||
                                message == "Failed to read AMC file. Specify a valid file name";
            // What fails for the nodes at the ends of leaves and for names of chains has a status
            // and no message, and the parser's status is one for all.
            const bool isSilent =
                message.empty() && (status.GetCode() == Zelk::status::kOutOfMemory ||
                                    status.GetCode() == Zelk::status::kFail);
            EXPECT_TRUE(isFile || isSilent || message == "Out of memory")
                << allocation << ": " << message;
        }
        EXPECT_THAT(SceneProblems(false), IsEmpty()) << allocation;
        if (HasFailure()) return;
    }
    EXPECT_GT(failures, 50u);
}

INSTANTIATE_TEST_SUITE_P(, AllocationFaults, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

}  // namespace
