#include "bridge/check_source.h"

#include <gmock/gmock.h>

#include "files/system_storage.h"

namespace check_source_test {

using testing::HasSubstr;

constexpr char kBvh[] =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\nEnd Site\n{\n"
    "OFFSET 0 1 0\n}\n}\nMOTION\nFrames: 1\nFrame Time: 0.5\n0 0 0\n";
constexpr char kAsf[] =
    ":version 1.10\n:name skel\n:units\nmass 1.0\nlength 1.0\nangle deg\n:root\norder TX TY TZ RX "
    "RY RZ\naxis XYZ\nposition 0 0 0\norientation 0 0 0\n:bonedata\nbegin\nid 1\nname "
    "leg\ndirection 0 1 0\nlength 1\naxis 0 0 0 XYZ\ndof rx\nlimits (-180 180)\nend\n:hierarchy\n"
    "begin\nroot leg\nend\n";
constexpr char kAmc[] = ":FULLY-SPECIFIED\n:DEGREES\n1\nroot 0 0 0 0 0 0\nleg 5\n";

take::InputFile Memory(const char* name, const char* text) {
    return {name, text, name};
}

std::vector<bridge::CheckedSource> Check(const take::InputFile& file, const take::InputFile* motion,
                                         bridge::SourceKind kind) {
    files::SystemStorage storage;
    return bridge::CheckSource(file, motion, kind, {}, storage);
}

TEST(CheckSource, SurveysOneResultForEachFile) {
    const take::InputFile amc = Memory("07_01.amc", kAmc);
    const take::InputFile asf = Memory("07.asf", kAsf);
    const auto bvh = Check(Memory("walk.bvh", kBvh), nullptr, {});
    ASSERT_EQ(bvh.size(), 1U);
    EXPECT_EQ(bvh[0].survey.facts.joints, 1U);
    const auto pair = Check(asf, &amc, {true, false});
    ASSERT_EQ(pair.size(), 2U);
    EXPECT_EQ(pair[0].survey.facts.joints, 2U);
    EXPECT_EQ(pair[1].survey.facts.frames, 1U);
    EXPECT_EQ(Check(asf, nullptr, {true, false})[0].survey.facts.joints, 2U);
    EXPECT_EQ(Check(amc, nullptr, {true, true})[0].survey.facts.frames, 1U);
}

TEST(CheckSource, ReportsFilesThatCannotBeRead) {
    const take::InputFile missing{"/nowhere/07_01.amc"};
    const auto pair = Check(Memory("07.asf", kAsf), &missing, {true, false});
    ASSERT_EQ(pair.size(), 2U);
    EXPECT_FALSE(pair[0].survey.Has(survey::Severity::Error));
    ASSERT_EQ(pair[1].survey.findings.size(), 1U);
    EXPECT_THAT(pair[1].survey.findings[0].message, HasSubstr("no such file"));
}

}  // namespace check_source_test
