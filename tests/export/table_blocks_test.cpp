// Compares the poses that are computed in blocks with the evaluation of the scene, row by row.
#include "export/table_blocks.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/block_parts.h"
#include "export/quaternion.h"
#include "tests/export/exported.h"

namespace table_blocks_test {

using exporters::Options;
using exporters::Table;
using exporters::TableBlocks;
using exporters::UpAxis;
using headless::Transform;
using math::PoseLanes;

// Two sections with more frames than a block has, and one without motion. Most joints turn. With
// `moves`, one joint other than the roots is moved, too.
std::string Takes(bool moves) {
    const std::string channels = moves ? "6 Xposition Yposition Zposition " : "3 ";
    const int values = moves ? 16 : 13;
    const auto section = [&](const std::string& root, int frames) {
        std::string text =
            "HIERARCHY\nROOT " + root +
            "\n{\nOFFSET 1 2 3\nCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation "
            "Yrotation\nJOINT " +
            root + "Back\n{\nOFFSET 0 9 1\nCHANNELS 3 Xrotation Yrotation Zrotation\nJOINT " +
            root + "Hand\n{\nOFFSET 4 0 0\nCHANNELS " + channels +
            "Zrotation Yrotation Xrotation\nEnd Site\n{\nOFFSET 0 0 1\n}\n}\n}\nJOINT " + root +
            "Leg\n{\nOFFSET 1 -5 0\nCHANNELS 1 Xrotation\nEnd Site\n{\nOFFSET 0 -4 0\n}\n}\n}\n"
            "MOTION\nFrames: " +
            std::to_string(frames) + "\nFrame Time: 0.01\n";
        for (int frame = 0; frame < frames; ++frame) {
            for (int value = 0; value < values; ++value)
                text += std::to_string((frame * (37 + 11 * value) + 45 * value) % 720 - 360) + ' ';
            text.back() = '\n';
        }
        return text;
    };
    return section("A", 150) + section("B", 70) + section("C", 0);
}

double Length(const Transform& transform) {
    return std::hypot(transform.origin[0], transform.origin[1], transform.origin[2]);
}

void ExpectAlike(const PoseLanes& pose, std::size_t lane, const Transform& transform) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        ASSERT_NEAR(pose.position[axis][lane], transform.origin[axis],
                    1e-13 * (1.0 + Length(transform)));
    const double q[] = {pose.rotation[0][lane], pose.rotation[1][lane], pose.rotation[2][lane],
                        pose.rotation[3][lane]};
    const exporters::Quaternion plain = exporters::QuaternionOf(transform.axes);
    const double cosine = q[0] * plain.x + q[1] * plain.y + q[2] * plain.z + q[3] * plain.w;
    const double sign = cosine < 0.0 ? -1.0 : 1.0;
    ASSERT_NEAR(q[0], sign * plain.x, 3e-15);
    ASSERT_NEAR(q[1], sign * plain.y, 3e-15);
    ASSERT_NEAR(q[2], sign * plain.z, 3e-15);
    ASSERT_NEAR(q[3], sign * plain.w, 3e-15);
}

struct Row {
    const char* name;
    Options options;
    bool nulls = true;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const Row kRows[] = {
    {"Nulls", {}},
    {"Bones", {}, false},
    {"Scaled", {.scale = 2.54}},
    {"UpZ", {.up = UpAxis::Z}},
    {"UpX", {.up = UpAxis::X}},
    {"InPlace", {.up = UpAxis::Z, .inPlace = true}},
    {"Samples", {.resampleTo = 37.0}},
    {"Range", {.frames = exporters::FrameRange{20, 100}}},
    {"OneFrame", {.frames = exporters::FrameRange{20, 20}}},
};

class TableBlocksOf : public testing::TestWithParam<Row> {};

TEST_P(TableBlocksOf, AreTheEvaluatedPoses) {
    ASSERT_TRUE(exported::ImportText(Takes(GetParam().nulls), {.nulls = GetParam().nulls}));
    const headless::Scene& scene = exported::CurrentScene();
    const Table table(scene, GetParam().options, true);
    const TableBlocks blocks(table, scene, GetParam().options);
    ASSERT_EQ(blocks.Columns(), table.Columns().size());
    const std::size_t columns = blocks.Columns();
    TableBlocks::Scratch scratch;
    Table::Scratch plain;
    std::vector<Transform> locals(table.Rows() * columns);
    std::vector<Transform> globals(table.Rows() * columns);
    for (std::size_t row = 0; row < table.Rows(); ++row)
        table.Row(row, std::span(locals).subspan(row * columns, columns),
                  std::span(globals).subspan(row * columns, columns), plain);
    std::size_t seen = 0;
    for (std::size_t row = 0; row < table.Rows(); row += math::kPoseLanes) {
        const std::size_t count = std::min(math::kPoseLanes, table.Rows() - row);
        blocks.ForEach(row, count, scratch,
                       [&](std::size_t column, const PoseLanes& local, const PoseLanes& global) {
                           for (std::size_t lane = 0; lane < count; ++lane, ++seen) {
                               const std::size_t index = (row + lane) * columns + column;
                               ExpectAlike(local, lane, locals[index]);
                               ExpectAlike(global, lane, globals[index]);
                           }
                       });
        ASSERT_FALSE(HasFatalFailure()) << row;
    }
    EXPECT_EQ(seen, table.Rows() * columns);
}

INSTANTIATE_TEST_SUITE_P(, TableBlocksOf, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(TableBlocks, NameTheFirstFrameThatIsNotFinite) {
    const std::string text =
        "HIERARCHY\nROOT A\n{\nOFFSET 0 0 0\nCHANNELS 3 Xposition Yposition Zposition\nJOINT B\n{\n"
        "OFFSET 0 1 0\nCHANNELS 3 Xposition Yposition Zposition\nEnd Site\n{\nOFFSET 0 1 0\n}\n}\n"
        "}\nMOTION\nFrames: 4\nFrame Time: 0.1\n0 0 0 0 0 0\n1 0 0 0 0 0\n0 0 0 1e300 0 0\n"
        "1e300 0 0 0 0 0\n";
    ASSERT_TRUE(exported::ImportText(text));
    const Options options{.scale = 1e300};
    const Table table(exported::CurrentScene(), options, true);
    const TableBlocks blocks(table, exported::CurrentScene(), options);
    TableBlocks::Scratch scratch;
    try {
        blocks.ForEach(0, 4, scratch, [](std::size_t, const PoseLanes&, const PoseLanes&) {});
        ADD_FAILURE() << "nothing was thrown";
    } catch (const exporters::ExportError& error) {
        EXPECT_THAT(error.what(), testing::EndsWith("is not a finite number in frame 3"));
    }
}

TEST(BlockParts, ConsistOfWholeBlocks) {
    for (const std::size_t frames : {std::size_t{0}, std::size_t{1}, std::size_t{64},
                                     std::size_t{65}, std::size_t{10'000}, std::size_t{99'968}})
        for (const std::size_t threads : {std::size_t{1}, std::size_t{2}, std::size_t{5}}) {
            const auto parts = exporters::BlockParts(frames, 100, threads);
            ASSERT_FALSE(parts.empty());
            EXPECT_LE(parts.size(), threads);
            std::size_t next = 0;
            for (const auto& [first, end] : parts) {
                EXPECT_EQ(first, next);
                EXPECT_TRUE(first < end || frames == 0);
                EXPECT_EQ(first % math::kPoseLanes, 0U);
                next = end;
            }
            EXPECT_EQ(next, frames);
        }
}

}  // namespace table_blocks_test
