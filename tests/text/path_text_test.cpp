#include "text/path_text.h"

#include <gtest/gtest.h>

namespace {

TEST(PathParts, AreSplitAtSlashesAndDots) {
    EXPECT_EQ(text::FolderPart("a/b.c/d"), "a/b.c/");
    EXPECT_EQ(text::FolderPart("d"), "");
    EXPECT_EQ(text::NamePart("a/b.c/d"), "d");
    EXPECT_EQ(text::WithoutExtension("a/b.c/d"), "a/b.c/d");
    EXPECT_EQ(text::WithoutExtension("a/b.c.d"), "a/b.c");
    EXPECT_EQ(text::WithoutExtension("a/.bvh"), "a/.bvh");
    EXPECT_EQ(text::WithoutExtension(".bvh"), ".bvh");
}

TEST(LowerCaseExtension, IsOfTheNameAlone) {
    EXPECT_EQ(text::LowerCaseExtension("a.b/Walk.BVH"), ".bvh");
    EXPECT_EQ(text::LowerCaseExtension("walk.tar.Gz"), ".gz");
    EXPECT_EQ(text::LowerCaseExtension(".bvh"), ".bvh");
    EXPECT_EQ(text::LowerCaseExtension("a.b/walk"), "");
    EXPECT_EQ(text::LowerCaseExtension("walk."), ".");
}

TEST(GzipName, IsToldByItsLastExtension) {
    EXPECT_TRUE(text::IsGzipName("a/walk.bvh.gz"));
    EXPECT_TRUE(text::IsGzipName("WALK.BVH.GZ"));
    EXPECT_FALSE(text::IsGzipName("walk.gz/a.bvh"));
    EXPECT_FALSE(text::IsGzipName("walkgz"));
    EXPECT_EQ(text::WithoutGzip("a/walk.bvh.Gz"), "a/walk.bvh");
    EXPECT_EQ(text::WithoutGzip("a.gz/walk.bvh"), "a.gz/walk.bvh");
    EXPECT_EQ(text::WithoutGzip(".gz"), "");
}

}  // namespace
