// Imports a file, exports it and imports the export: every joint must be at the same position in
// every frame.
#include <filesystem>
#include <gtest/gtest.h>

#include "tests/export/exported.h"
#include "tests/support/bvh_random.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

using exported::Take;

// The greatest distance, as a fraction of the skeleton's size.
constexpr double kBound = 1e-5;
constexpr std::uint64_t kRandomFiles = 200;

struct Trip {
    std::string name;
    exported::ImportSettings settings;
    bool backAsNulls = true;
};

// Without this, the name of the test would contain the bytes of the row.
std::ostream& operator<<(std::ostream& out, const Trip& row) {
    return out << row.name;
}

const Trip kTrips[] = {
    {"NullsAsNulls", {.nulls = true}, true},
    {"BonesAsNulls", {.nulls = false}, true},
    {"BonesWithMovedEffectorsAsNulls", {.nulls = false, .effectorToLastBone = true}, true},
};

void ExpectSameMotion(const std::vector<Take>& before, const std::vector<Take>& after) {
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t model = 0; model < before.size(); ++model) {
        const Take& first = before[model];
        const Take& second = after[model];
        // The export may have added a root before the joints.
        const std::size_t added = second.names.size() - first.names.size();
        ASSERT_LE(added, 1u);
        ASSERT_EQ(first.positions.size(), second.positions.size());
        EXPECT_NEAR(first.secondsPerFrame, second.secondsPerFrame, 1e-15);
        double most = 0.0;
        for (std::size_t frame = 0; frame < first.positions.size(); ++frame)
            most = std::max(most, first.Distance(second, frame, added));
        EXPECT_LE(most, kBound * first.size);
    }
}

// Returns false if the files cannot be imported.
bool MakeTrip(const std::vector<std::string>& files, const Trip& trip) {
    SCOPED_TRACE(files.back() + " " + trip.name);
    if (!exported::Import(files, trip.settings)) return false;
    const std::vector<Take> before = exported::RecordAll();
    const support::TemporaryFolder folder;
    const std::string name = std::filesystem::path(files.front()).stem().string() + ".bvh";
    const std::string path = folder.Write(name, exported::Export(".bvh"));
    EXPECT_TRUE(exported::Import({path}, {.nulls = trip.backAsNulls}));
    ExpectSameMotion(before, exported::RecordAll());
    return true;
}

class BvhRoundTrip : public testing::TestWithParam<Trip> {};

TEST_P(BvhRoundTrip, KeepsTheSamplesMotion) {
    for (const auto& files : exported::Samples())
        EXPECT_TRUE(MakeTrip(files, GetParam()));
}

TEST(BvhNames, ComeBackAsTheyWere) {
    for (std::uint64_t seed = 0; seed < kRandomFiles; ++seed) {
        if (!exported::ImportText(support::RandomBvh(seed))) continue;
        const std::vector<Take> before = exported::RecordAll();
        ASSERT_TRUE(exported::ImportText(exported::Export(".bvh")));
        const std::vector<Take> after = exported::RecordAll();
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t model = 0; model < before.size(); ++model) {
            if (before[model].names.size() != after[model].names.size()) continue;
            EXPECT_EQ(before[model].names, after[model].names) << seed;
        }
    }
}

TEST_P(BvhRoundTrip, KeepsRealMotion) {
    if (!support::CaptureFolder()) GTEST_SKIP() << support::kNoCaptures;
    const auto captures = exported::RealCaptures();
    std::size_t trips = 0;
    for (const auto& files : captures)
        trips += MakeTrip(files, GetParam());
    EXPECT_GT(trips, captures.size() / 2);
}

TEST_P(BvhRoundTrip, KeepsRandomMotion) {
    const support::TemporaryFolder folder;
    std::size_t trips = 0;
    for (std::uint64_t seed = 0; seed < kRandomFiles; ++seed) {
        const std::string name = "random" + std::to_string(seed) + ".bvh";
        trips += MakeTrip({folder.Write(name, support::RandomBvh(seed))}, GetParam());
    }
    EXPECT_GT(trips, kRandomFiles / 4);
}

INSTANTIATE_TEST_SUITE_P(, BvhRoundTrip, testing::ValuesIn(kTrips),
                         [](const auto& row) { return row.param.name; });

}  // namespace
