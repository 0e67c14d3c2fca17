#include "pairing/capture_kind.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using pairing::CaptureKind;

struct NameRow {
    const char* path;
    std::optional<CaptureKind> kind;
};

const NameRow kNames[] = {
    {"walk.bvh", CaptureKind::Biovision},
    {"a.bvh/07.ASF", CaptureKind::Skeleton},
    {"07_01.Amc", CaptureKind::Motion},
    {"walk.bvh.gz", CaptureKind::Biovision},
    {"WALK.BVH.GZ", CaptureKind::Biovision},
    {"a.gz/07.asf.Gz", CaptureKind::Skeleton},
    {"07_01.amc.gz", CaptureKind::Motion},
    {"walk.gz", std::nullopt},
    {"walk.bvh.gz.gz", std::nullopt},
    {"walk.bvhgz", std::nullopt},
    {".gz", std::nullopt},
    {"a.bvh/walk", std::nullopt},
    {".bvh", CaptureKind::Biovision},
    {"folder/.bvh", CaptureKind::Biovision},
    {"walk.", std::nullopt},
    {"", std::nullopt},
};

TEST(CaptureKind, FollowsFromTheExtension) {
    for (const NameRow& row : kNames)
        EXPECT_EQ(pairing::KindOf(row.path), row.kind) << row.path;
}

TEST(CaptureKind, HasAName) {
    EXPECT_EQ(pairing::NameOf(CaptureKind::Biovision), "bvh");
    EXPECT_EQ(pairing::NameOf(CaptureKind::Skeleton), "asf");
    EXPECT_EQ(pairing::NameOf(CaptureKind::Motion), "amc");
}

TEST(CaptureKind, TellsAcclaimFilesFromOthers) {
    EXPECT_FALSE(pairing::IsAcclaim("walk.bvh"));
    EXPECT_TRUE(pairing::IsAcclaim("07.asf"));
    EXPECT_TRUE(pairing::IsAcclaim("07_01.amc"));
    EXPECT_FALSE(pairing::IsAcclaim("07.txt"));
}

}  // namespace
