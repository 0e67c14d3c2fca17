// The share of an import's time, as whole imports of the plug-in's importers let it rise.
#include "bridge/import_progress.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "bvh/biovision_import.h"
#include "headless/session.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace {

using bridge::ImportKind;
using take::Format;

constexpr int kBones = 30;
constexpr int kFrames = 400;

std::string BvhText() {
    std::string text =
        "HIERARCHY\nROOT B0\n{\nOFFSET 0 0 0\n"
        "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n";
    for (int bone = 1; bone < kBones; ++bone)
        text += "JOINT B" + std::to_string(bone) +
                "\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n";
    text += "End Site\n{\nOFFSET 0 1 0\n}\n";
    for (int bone = 0; bone < kBones; ++bone)
        text += "}\n";
    text += "MOTION\nFrames: " + std::to_string(kFrames) + "\nFrame Time: 0.01\n";
    for (int frame = 0; frame < kFrames; ++frame) {
        for (int value = 0; value < 3 * (kBones + 1); ++value)
            text += std::to_string((frame + value) % 50) + ".5 ";
        text += "\n";
    }
    return text;
}

std::string AsfText() {
    std::string text =
        ":version 1.10\n:name skel\n:units\nmass 1.0\nlength 1.0\nangle deg\n:root\n"
        "order TX TY TZ RX RY RZ\naxis XYZ\nposition 0 0 0\norientation 0 0 0\n:bonedata\n";
    std::string hierarchy = ":hierarchy\nbegin\nroot b1\n";
    for (int bone = 1; bone < kBones; ++bone) {
        const std::string name = "b" + std::to_string(bone);
        text += "begin\nid " + std::to_string(bone) + "\nname " + name +
                "\ndirection 0 1 0\nlength 1\naxis 0 0 0 XYZ\ndof rx ry rz\n"
                "limits (-180 180)\n(-180 180)\n(-180 180)\nend\n";
        if (bone > 1) hierarchy += "b" + std::to_string(bone - 1) + ' ' + name + "\n";
    }
    return text + hierarchy + "end\n";
}

std::string LongAmcText() {
    std::string text = ":FULLY-SPECIFIED\n:DEGREES\n";
    for (int frame = 1; frame <= kFrames; ++frame) {
        text += std::to_string(frame) + "\nroot 0 0 0 1 2 3\n";
        for (int bone = 1; bone < kBones; ++bone)
            text += "b" + std::to_string(bone) + " 1.5 2.5 3.5\n";
    }
    return text;
}

constexpr std::uint64_t kAmcValues = std::uint64_t{kFrames} * 3 * (kBones + 1);

Zelk::CString HostText(const std::string& text) {
    return Zelk::CString(std::wstring(text.begin(), text.end()).c_str());
}

bool ImportBvh(bool nulls) {
    const support::TemporaryFolder folder;
    CBiovisionImport importer;
    importer.SetOptions(nulls, true, false, true);
    return importer.ImportBVH(HostText(folder.Write("walk.bvh", BvhText())), L"walk").Succeeded();
}

bool ImportAcclaim(bool nulls) {
    const support::TemporaryFolder folder;
    CAcclaimImport importer;
    importer.SetOptions(nulls, true, false, true);
    const std::string asf = folder.Write("a.asf", AsfText());
    const std::string amc = folder.Write("a.amc", LongAmcText());
    return importer.ImportSkeleton(HostText(asf), L"walk").Succeeded() &&
           importer.ImportMotion(HostText(amc), L"walk_Motion").Succeeded();
}

struct Import {
    const char* name;
    ImportKind kind;
    bool (*run)(bool nulls);
    // The greatest step of the share. A step of 1 means that the share is not even.
    double mostStep;
};

std::ostream& operator<<(std::ostream& out, const Import& row) {
    return out << row.name;
}

class ImportProgress : public testing::TestWithParam<Import> {};

TEST_P(ImportProgress, RisesInSmallStepsToTheEnd) {
    support::StartSession(true);
    headless::Session& session = headless::Session::Current();
    bridge::ImportProgress progress(GetParam().kind);
    std::vector<double> shares = {0.0};
    const auto note = [&] {
        if (progress.IsVisible()) shares.push_back(progress.Share());
    };
    session.OnBar([&](const headless::BarEvent& event) {
        progress.Receive(event);
        note();
    });
    session.OnCancelPoll([&] {
        if (progress.ReceivePoll()) note();
        return false;
    });
    ASSERT_TRUE(GetParam().run(GetParam().kind.useNulls));
    EXPECT_FALSE(progress.IsVisible());
    EXPECT_EQ(shares.back(), 1.0);
    double mostStep = 0.0;
    for (std::size_t index = 1; index < shares.size(); ++index) {
        EXPECT_GE(shares[index], shares[index - 1]) << index;
        mostStep = std::max(mostStep, shares[index] - shares[index - 1]);
    }
    EXPECT_LE(mostStep, GetParam().mostStep);
}

const Import kImports[] = {
    {"BvhNulls", {Format::Biovision, true, 0}, ImportBvh, 0.02},
    {"BvhBones", {Format::Biovision, false, 0}, ImportBvh, 0.02},
    {"AcclaimNulls", {Format::Acclaim, true, kAmcValues}, ImportAcclaim, 0.02},
    {"AcclaimBones", {Format::Acclaim, false, kAmcValues}, ImportAcclaim, 0.02},
    {"TooFewAmcValuesExpected", {Format::Acclaim, true, kAmcValues / 2}, ImportAcclaim, 0.02},
    {"TooManyAmcValuesExpected", {Format::Acclaim, true, kAmcValues * 2}, ImportAcclaim, 0.31},
    {"UnknownAmcValues", {Format::Acclaim, true, 0}, ImportAcclaim, 0.61},
};
INSTANTIATE_TEST_SUITE_P(, ImportProgress, testing::ValuesIn(kImports),
                         [](const auto& row) { return row.param.name; });

TEST(ImportProgressOfSections, BeginsAgain) {
    using Kind = headless::BarEvent::Kind;
    bridge::ImportProgress progress({});
    progress.Receive({Kind::Caption, 0, L"Almost done..."});
    EXPECT_EQ(progress.Share(), 1.0);
    progress.Receive({Kind::Caption, 0, L"Importing Motion..."});
    EXPECT_EQ(progress.Share(), 0.0);
}

TEST(ImportProgressOfOtherCaptions, StaysAsItIs) {
    using Kind = headless::BarEvent::Kind;
    bridge::ImportProgress progress({});
    progress.Receive({Kind::Caption, 0, L"Creating Zelk model..."});
    const double share = progress.Share();
    progress.Receive({Kind::Caption, 0, L"Another caption"});
    EXPECT_EQ(progress.Share(), share);
    EXPECT_EQ(progress.Caption(), L"Another caption");
}

}  // namespace
