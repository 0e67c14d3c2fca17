#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>

#include "tests/mocap/importer.h"
#include "tests/support/temporary_folder.h"

namespace {

using mocap_test::Importer;
using testing::Each;
using testing::ElementsAre;

class ImportBase : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }

    // Reads a token, after which the reader is at line 12, column 5, both counted from 0.
    static void ReadToLine12(Importer& importer) {
        const support::TemporaryFolder dir;
        const std::string path = dir.Write("lines", std::string(12, '\n') + "12345 rest");
        ASSERT_TRUE(importer.stringFile.ReadFile(std::wstring(path.begin(), path.end()).c_str()));
        importer.stringFile.GetNextString();
    }
};

TEST_F(ImportBase, BeginsWithItsDefaults) {
    const Importer importer;
    EXPECT_FALSE(importer.useNulls);
    EXPECT_TRUE(importer.chainFromParentJoint);
    EXPECT_FALSE(importer.effectorToLastBone);
    EXPECT_TRUE(importer.createGroup);
    EXPECT_FALSE(importer.WasParsing());
    EXPECT_FALSE(importer.GetLastModel().IsValid());
    EXPECT_FALSE(importer.GetLastBasePose().IsValid());
    EXPECT_FALSE(importer.GetLastMotion().IsValid());
    EXPECT_EQ(importer.frameCount, 0u);
    EXPECT_EQ(importer.channelCount, 0u);
    EXPECT_TRUE(importer.modelName.IsEmpty());
    EXPECT_TRUE(importer.models.empty());
    std::uint32_t line = 7;
    std::uint32_t column = 7;
    EXPECT_TRUE(importer.GetLastError(&line, &column).IsEmpty());
    EXPECT_EQ(line, 0u);
    EXPECT_EQ(column, 0u);
}

TEST_F(ImportBase, KnowsItsFormat) {
    EXPECT_EQ(CMocapImportBase::MOCAP_FORMAT_BIOVISION, 0);
    EXPECT_EQ(CMocapImportBase::MOCAP_FORMAT_ACCLAIM, 1);
    EXPECT_EQ(Importer(CMocapImportBase::MOCAP_FORMAT_ACCLAIM).format,
              CMocapImportBase::MOCAP_FORMAT_ACCLAIM);
}

TEST_F(ImportBase, SetsItsOptionsInOrder) {
    Importer importer;
    for (int bits = 0; bits < 16; ++bits) {
        importer.SetOptions(bits & 1, bits & 2, bits & 4, bits & 8);
        EXPECT_EQ(importer.useNulls, (bits & 1) != 0);
        EXPECT_EQ(importer.chainFromParentJoint, (bits & 2) != 0);
        EXPECT_EQ(importer.effectorToLastBone, (bits & 4) != 0);
        EXPECT_EQ(importer.createGroup, (bits & 8) != 0);
    }
}

TEST_F(ImportBase, RecordsAMessageWithThePositionOfTheReader) {
    Importer importer;
    ReadToLine12(importer);
    importer.RecordError(L"first");
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    EXPECT_EQ(support::Utf8(importer.GetLastError(&line, &column)), "first");
    EXPECT_EQ(line, 12u);
    EXPECT_EQ(column, 5u);

    importer.stringFile.GetNextString();
    importer.RecordError(L"second");
    EXPECT_EQ(support::Utf8(importer.GetLastError(&line, &column)), "second");
    EXPECT_EQ(line, 12u);
    EXPECT_EQ(column, 10u);

    importer.RecordError(Zelk::CString());
    EXPECT_TRUE(importer.GetLastError(&line, &column).IsEmpty());
    EXPECT_EQ(line, 0u);
    EXPECT_EQ(column, 0u);
}

TEST_F(ImportBase, RecordsLineAndColumnZeroWithoutAFile) {
    Importer importer;
    importer.RecordError(L"early");
    std::uint32_t line = 9;
    std::uint32_t column = 9;
    importer.GetLastError(&line, &column);
    EXPECT_EQ(line, 0u);
    EXPECT_EQ(column, 0u);
}

TEST_F(ImportBase, GivesLineAndColumnOnlyIfAsked) {
    Importer importer;
    ReadToLine12(importer);
    importer.RecordError(L"text");
    EXPECT_EQ(support::Utf8(importer.GetLastError(nullptr, nullptr)), "text");
    std::uint32_t line = 0;
    importer.GetLastError(&line, nullptr);
    EXPECT_EQ(line, 12u);
    std::uint32_t column = 0;
    importer.GetLastError(nullptr, &column);
    EXPECT_EQ(column, 5u);
}

TEST_F(ImportBase, KeepsItsMessageAfterTheFileIsCleared) {
    Importer importer;
    ReadToLine12(importer);
    importer.RecordError(L"text");
    importer.stringFile.ClearFile();
    std::uint32_t line = 0;
    EXPECT_EQ(support::Utf8(importer.GetLastError(&line, nullptr)), "text");
    EXPECT_EQ(line, 12u);
}

TEST_F(ImportBase, ReportsWhetherItWasParsing) {
    Importer importer;
    importer.parsing = true;
    EXPECT_TRUE(importer.WasParsing());
}

TEST_F(ImportBase, FindsTheParentsNull) {
    Importer importer;
    importer.MakeModel();
    MOCAPMODEL& root = importer.AddNode("Root", nullptr, {0, 0, 0});
    MOCAPMODEL& child = importer.AddNode("Child", &root, {0, 1, 0});
    EXPECT_FALSE(importer.GetModelParent(&root).IsValid());
    // The parent has no null yet.
    EXPECT_FALSE(importer.GetModelParent(&child).IsValid());
    ASSERT_TRUE(importer.CreateNullsSkeleton().Succeeded());
    EXPECT_FALSE(importer.GetModelParent(&root).IsValid());
    EXPECT_EQ(mocap_test::NameOf(importer.GetModelParent(&child)), "Root");
}

TEST(MocapModel, StartsEmpty) {
    MOCAPMODEL node;
    EXPECT_EQ(node.name, nullptr);
    EXPECT_EQ(node.parent, nullptr);
    EXPECT_EQ(node.childCount, 0u);
    EXPECT_EQ(node.boneChildCount, 0u);
    EXPECT_EQ(node.depth, 0u);
    EXPECT_FALSE(node.isDetached);
    EXPECT_FALSE(node.isEndSite);
    EXPECT_THAT(node.offset, Each(0.0));
    EXPECT_THAT(node.globalPosition, Each(0.0));
    EXPECT_EQ(node.boneId, 0u);
    EXPECT_THAT(node.orientation, Each(0.0));
    EXPECT_THAT(node.direction, Each(0.0));
    EXPECT_EQ(node.length, 0.0);
    EXPECT_THAT(node.basePose, Each(0.0));
    EXPECT_EQ(std::size(node.basePose), 7u);
    EXPECT_FALSE(node.bone.IsValid());
    EXPECT_FALSE(node.nullObject.IsValid());
    // Slots are made when the first of them is asked for.
    EXPECT_EQ(node.channels.begin(), node.channels.end());
    EXPECT_EQ(FindChannel(node, kPositionX), nullptr);
    const auto* const first = FindChannel(node, kEmptySlot);
    EXPECT_EQ(first, node.channels.begin());
    EXPECT_EQ(std::size_t(node.channels.end() - node.channels.begin()), 7u);
    for (const auto& slot : node.channels) {
        EXPECT_EQ(slot.type, 0);
        EXPECT_EQ(slot.keys, nullptr);
        EXPECT_FALSE(slot.hasMinLimit);
        EXPECT_FALSE(slot.hasMaxLimit);
        EXPECT_EQ(slot.minLimit, 0.0);
        EXPECT_EQ(slot.maxLimit, 0.0);
    }
}

TEST(MocapModel, NumbersItsChannelsAsTheHostDoes) {
    EXPECT_THAT((std::array<int, 9>{kEmptySlot, kPositionX, kPositionY, kPositionZ, kRotationX,
                                    kRotationY, kRotationZ, kBoneLength, kIgnoredChannel}),
                ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 255));
    EXPECT_TRUE(std::is_trivial_v<MOCAP_RAWKEY>);
}

}  // namespace
