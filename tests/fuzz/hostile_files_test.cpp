// Short files that ask for much memory, and paths that do not lead to a readable file.
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
#include "tests/support/temporary_folder.h"

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

// The message for a file that asks for too much of something.
std::string TooMany(const std::string& what, std::size_t limit) {
    return "The file asks for more " + what + " than its size allows (limit " +
           std::to_string(limit) + ")";
}

std::string TooManyNames(std::size_t fileSize) {
    return TooMany("characters of derived names", (std::size_t{4} << 20) + 4 * fileSize);
}

std::string TooManyChains(std::size_t fileSize) {
    return TooMany("bone chains and nulls at their ends", 40000 + fileSize / 40);
}

struct Row {
    const char* name;
    std::string head;
    std::string unit;
    std::size_t accepted;  // units that are imported
    std::size_t refused;   // units that are too many
    std::string (*refusal)(std::size_t fileSize);
    bool nulls = true;
};
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const std::string kRoot = "HIERARCHY ROOT a { OFFSET 0 0 0 ";

// Each unit makes characters or objects out of proportion to its bytes.
const Row kBvhRows[] = {
    {"EndSitesInsideEndSites", kRoot, "End Site { OFFSET 0 1 0 ", 500, 3000, TooManyNames},
    {"EndSitesBelowALongName", "HIERARCHY ROOT " + std::string(20000, 'n') + " { OFFSET 0 0 0 ",
     "End Site { OFFSET 0 1 0 } ", 40, 1000, TooManyNames},
    {"ChainsBelowALongName", "HIERARCHY ROOT " + std::string(20000, 'n') + " { OFFSET 0 0 0 ",
     "JOINT b { OFFSET 0 1 0 } ", 10, 1000, TooManyNames, false},
    {"ChainsBelowAShortName", kRoot, "JOINT b { OFFSET 0 1 0 } ", 100000, 160000, TooManyChains,
     false},
};

class GreedyBvh : public testing::TestWithParam<Row> {
  protected:
    static std::string Text(std::size_t units) {
        return GetParam().head + Repeated(GetParam().unit, units) +
               " MOTION Frames: 0 Frame Time: 0\n";
    }
    static Outcome Import(const std::string& text) {
        return ImportBvhAt(fuzz::MemoryFile(text).Path().c_str(), GetParam().nulls);
    }
};

TEST_P(GreedyBvh, IsImportedOnlyInProportionToItsSize) {
    EXPECT_EQ(Import(Text(GetParam().accepted)).message, "");
    const std::string text = Text(GetParam().refused);
    const Outcome refused = Import(text);
    EXPECT_EQ(refused.message, GetParam().refusal(text.size()));
    EXPECT_TRUE(refused.status == "0x8007000E" || refused.status == "0x80004005") << refused.status;
}

INSTANTIATE_TEST_SUITE_P(, GreedyBvh, testing::ValuesIn(kBvhRows),
                         [](const auto& row) { return std::string(row.param.name); });

// The file is refused because a single joint has no bone, not because of the number of joints.
TEST(JointsWithAChannel, AreNeverTooMany) {
    const fuzz::MemoryFile file(kRoot +
                                Repeated("JOINT b { OFFSET 0 1 0 CHANNELS 1 Xrotation } ", 30000) +
                                " MOTION Frames: 0 Frame Time: 0\n");
    EXPECT_EQ(ImportBvhAt(file.Path().c_str(), false).message, "Failed to add channel FCurve");
}

// More chains and nulls than the allowance of a small file, in a tree that branches as often as
// possible.
TEST(JointsWithAChannel, AreImportedHoweverTheyBranch) {
    const std::string joint = "JOINT b { OFFSET 0 1 0 CHANNELS 1 Xrotation ";
    const std::string leaf = joint + "End Site { OFFSET 0 1 0 } } ";
    const std::size_t units = 12000;
    const fuzz::MemoryFile file(kRoot + Repeated(joint + leaf + leaf + "} ", units) +
                                "MOTION Frames: 1 Frame Time: 1 " + Repeated("1 2 3 ", units));
    EXPECT_EQ(ImportBvhAt(file.Path().c_str(), false).message, "");
}

std::size_t ModelCount() {
    return headless::Session::Current().GetScene().Models().size();
}

TEST(GreedySections, LeaveTheModelsThatWereMade) {
    const std::string section =
        "HIERARCHY ROOT a { OFFSET 0 0 0 } MOTION Frames: 0 Frame Time: 0\n";
    const fuzz::MemoryFile few(Repeated(section, 10000));
    EXPECT_EQ(ImportBvhAt(few.Path().c_str()).message, "");
    EXPECT_EQ(ModelCount(), 10000u);

    const fuzz::MemoryFile many(Repeated(section, 45000));
    const std::size_t limit = 10000 + 45000 * section.size() / 96;
    EXPECT_EQ(ImportBvhAt(many.Path().c_str()).message,
              TooMany("sections without channels or frames", limit));
    EXPECT_EQ(ModelCount(), limit);
}

// Neither the shortest complete sections nor a long model name use up an allowance.
TEST(CompleteSections, AreNeverTooMany) {
    const std::string section =
        "HIERARCHY ROOT a { OFFSET 0 0 0 CHANNELS 1 Xrotation MOTION Frames: 1 Frame Time: 1 0\n";
    const fuzz::MemoryFile many(Repeated(section, 40000));
    EXPECT_EQ(ImportBvhAt(many.Path().c_str()).message, "");
    EXPECT_EQ(ModelCount(), 40000u);

    support::StartSession(false);
    const fuzz::MemoryFile some(Repeated(section, 3000));
    CBiovisionImport importer;
    const std::wstring name(256, L'n');
    EXPECT_TRUE(importer.ImportBVH(some.Path().c_str(), name.c_str()).Succeeded());
    EXPECT_EQ(ModelCount(), 3000u);
}

TEST(GreedyRoots, AreLimitedByTheSizeOfTheFile) {
    const auto import = [](std::size_t roots) {
        const fuzz::MemoryFile file(":version 1.10\n" + Repeated(":root\n", roots));
        return ImportSkeletonAt(file.Path().c_str());
    };
    EXPECT_EQ(import(1000).message, "");
    EXPECT_EQ(import(5000).message, TooMany("nodes", 1024 + (14 + 5000 * 6) / 16));
}

// Imports a motion of these lines for a skeleton of one root, and returns the log.
support::Lines WarningsOf(const std::string& lines, bool succeeds) {
    support::StartSession(false);
    const fuzz::MemoryFile asf(":version 1.10\n:root\norder RX\n");
    CAcclaimImport importer;
    importer.SetOptions(true, true, false, true);
    EXPECT_TRUE(importer.ImportSkeleton(asf.Path().c_str(), L"take").Succeeded());
    const fuzz::MemoryFile amc(":FULLY-SPECIFIED\n" + lines);
    EXPECT_EQ(importer.ImportMotion(amc.Path().c_str(), L"motion").Succeeded(), succeeds);
    return support::LogLines();
}

TEST(GreedyWarnings, AreCountedInALastLine) {
    const support::Lines all = WarningsOf(Repeated("x\n", 50000), true);
    ASSERT_EQ(all.size(), 50000u);
    EXPECT_EQ(all.back(), "4: Invalid keyword found (x) at line 50001, ignoring...");

    for (const bool succeeds : {true, false}) {
        const std::string frame = succeeds ? "1\nroot 1\n" : "1\nroot word\n";
        const support::Lines some = WarningsOf(Repeated("x\n", 200000) + frame, succeeds);
        EXPECT_LT(some.size(), 100000u);
        EXPECT_EQ(some.back(), "4: More unknown bones or invalid keywords found in AMC file (" +
                                   std::to_string(200000 - (some.size() - 1)) + "), ignoring...");
    }
}

// The warnings of the first motion do not use up the allowance of the next one.
TEST(GreedyWarnings, AreCountedSeparatelyForEachMotion) {
    support::StartSession(false);
    const fuzz::MemoryFile asf(":version 1.10\n:root\norder RX\n");
    CAcclaimImport importer;
    importer.SetOptions(true, true, false, true);
    EXPECT_TRUE(importer.ImportSkeleton(asf.Path().c_str(), L"take").Succeeded());
    const fuzz::MemoryFile greedy(":FULLY-SPECIFIED\n" + Repeated("x\n", 200000));
    EXPECT_TRUE(importer.ImportMotion(greedy.Path().c_str(), L"motion").Succeeded());
    const std::size_t before = support::LogLines().size();
    const fuzz::MemoryFile modest(":FULLY-SPECIFIED\nx\ny\n");
    EXPECT_TRUE(importer.ImportMotion(modest.Path().c_str(), L"motion").Succeeded());
    EXPECT_EQ(support::LogLines().size(), before + 2);
}

// Only a regular file with a size is read, and the import does not wait for any other.
TEST(StrangePath, IsRefused) {
    const support::TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string empty = folder.Write("empty", "");
    for (const std::string& path :
         {pipe, empty, folder.Path(), std::string("/dev/zero"), std::string("/dev/null"),
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
