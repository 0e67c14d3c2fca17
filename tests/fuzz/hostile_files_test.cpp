// Files that ask for much with little, and paths that lead to no file.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

#include "acclaim/acclaim_import.h"
#include "bvh/biovision_import.h"
#include "headless/session.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/scene_requirements.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temp_dir.h"

namespace {

struct Outcome {
    std::string status;
    std::string message;
};

template <class Importer>
Outcome OutcomeOf(const Importer& importer, const Zelk::CStatus& status) {
    fuzz::RequireSoundScene(status.Succeeded());
    return {support::StatusText(status.GetCode()),
            support::Utf8(importer.GetLastError(nullptr, nullptr))};
}

Outcome ImportBvhAt(const wchar_t* path, bool nulls = true) {
    support::StartSession(false);
    CBiovisionImport importer;
    importer.SetOptions(nulls, true, false, true);
    return OutcomeOf(importer, importer.ImportBVH(path, L"take"));
}

Outcome ImportSkeletonAt(const wchar_t* path, bool nulls = true) {
    support::StartSession(false);
    CAcclaimImport importer;
    importer.SetOptions(nulls, true, false, true);
    return OutcomeOf(importer, importer.ImportSkeleton(path, L"take"));
}

std::string Repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (; times > 0; --times)
        all += text;
    return all;
}

struct Row {
    const char* name;
    std::string head;
    std::string unit;
    std::size_t accepted;  // units that are imported
    std::size_t refused;   // units that are too many
    bool nulls = true;
};
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const std::string kRoot = "HIERARCHY ROOT a { OFFSET 0 0 0 ";

// Each unit is copied, or makes objects, out of proportion to its bytes.
const Row kBvhRows[] = {
    {"EndSitesInsideEndSites", kRoot, "End Site { OFFSET 0 1 0 ", 500, 3000},
    {"EndSitesBelowALongName", "HIERARCHY ROOT " + std::string(20000, 'n') + " { OFFSET 0 0 0 ",
     "End Site { OFFSET 0 1 0 } ", 40, 1000},
    {"ChainsBelowALongName", "HIERARCHY ROOT " + std::string(20000, 'n') + " { OFFSET 0 0 0 ",
     "JOINT b { OFFSET 0 1 0 } ", 10, 1000, false},
    {"ChainsBelowAShortName", kRoot, "JOINT b { OFFSET 0 1 0 } ", 100000, 160000, false},
};

class GreedyBvh : public testing::TestWithParam<Row> {
  protected:
    Outcome Import(std::size_t units) const {
        const Row& row = GetParam();
        const std::string text =
            row.head + Repeated(row.unit, units) + " MOTION Frames: 0 Frame Time: 0\n";
        return ImportBvhAt(fuzz::MemoryFile(text).Path().c_str(), row.nulls);
    }
};

TEST_P(GreedyBvh, GetsWhatIsInProportion) {
    EXPECT_EQ(Import(GetParam().accepted).message, "");
    const Outcome refused = Import(GetParam().refused);
    EXPECT_EQ(refused.message, "Out of memory");
    EXPECT_TRUE(refused.status == "0x8007000E" || refused.status == "0x80004005") << refused.status;
}

INSTANTIATE_TEST_SUITE_P(, GreedyBvh, testing::ValuesIn(kBvhRows),
                         [](const auto& row) { return std::string(row.param.name); });

// However many there are: that a joint of its own is no bone is what the file is refused for.
TEST(JointsWithAChannel, AreNeverTooMany) {
    const fuzz::MemoryFile file(kRoot +
                                Repeated("JOINT b { OFFSET 0 1 0 CHANNELS 1 Xrotation } ", 30000) +
                                " MOTION Frames: 0 Frame Time: 0\n");
    EXPECT_EQ(ImportBvhAt(file.Path().c_str(), false).message, "Failed to add channel FCurve");
}

TEST(GreedySections, LeaveTheModelsThatWereMade) {
    const std::string section =
        "HIERARCHY ROOT a { OFFSET 0 0 0 } MOTION Frames: 0 Frame Time: 0\n";
    const fuzz::MemoryFile few(Repeated(section, 500));
    EXPECT_EQ(ImportBvhAt(few.Path().c_str()).message, "");
    EXPECT_EQ(headless::Session::Current().GetScene().Models().size(), 500u);

    const fuzz::MemoryFile many(Repeated(section, 5000));
    EXPECT_EQ(ImportBvhAt(many.Path().c_str()).message, "Out of memory");
    EXPECT_GT(headless::Session::Current().GetScene().Models().size(), 500u);
}

TEST(GreedyRoots, GetOneForSoManyBytes) {
    const auto import = [](std::size_t roots) {
        const fuzz::MemoryFile file(":version 1.10\n" + Repeated(":root\n", roots));
        return ImportSkeletonAt(file.Path().c_str());
    };
    EXPECT_EQ(import(1000).message, "");
    EXPECT_EQ(import(5000).message, "Out of memory");
}

TEST(GreedyWarnings, GetSoMany) {
    const fuzz::MemoryFile asf(":version 1.10\n:root\norder RX\n");
    const auto warnings = [&](std::size_t lines) {
        support::StartSession(false);
        CAcclaimImport importer;
        importer.SetOptions(true, true, false, true);
        EXPECT_TRUE(importer.ImportSkeleton(asf.Path().c_str(), L"take").Succeeded());
        const fuzz::MemoryFile amc(":FULLY-SPECIFIED\n" + Repeated("x\n", lines));
        EXPECT_TRUE(importer.ImportMotion(amc.Path().c_str(), L"motion").Succeeded());
        return headless::Session::Current().Log().size();
    };
    EXPECT_EQ(warnings(50000), 50000u);
    EXPECT_LT(warnings(200000), 100000u);
}

// What is no file that can be measured is not read, and nothing waits for it.
TEST(StrangePath, IsRefused) {
    const support::TempDir folder;
    const std::string pipe = (folder.Path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string empty = folder.Write("empty", "");
    for (const std::string& path :
         {pipe, empty, folder.Path().string(), std::string("/dev/zero"), std::string("/dev/null"),
          std::string("/proc/self/mem"), std::string("/proc/self/maps"),
          std::string("/proc/self/fd"), std::string("/nowhere"), std::string(5000, 'x')}) {
        SCOPED_TRACE(path.substr(0, 80));
        const std::wstring wide(path.begin(), path.end());
        const Outcome bvh = ImportBvhAt(wide.c_str());
        EXPECT_EQ(bvh.message, "Failed to read BVH file. Specify a valid file name");
        EXPECT_EQ(bvh.status, "0x80070002");
        const Outcome asf = ImportSkeletonAt(wide.c_str());
        EXPECT_EQ(asf.message, "Failed to read ASF file. Specify a valid file name");
        EXPECT_EQ(asf.status, "0x80070002");
    }
}

}  // namespace
