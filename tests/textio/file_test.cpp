#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/textio/loaded.h"

namespace {

using support::TemporaryFolder;
using textio_test::Wide;

TEST(File, IsHeldWholeWithANulAfterIt) {
    const std::string bytes("a\r\nb\0\xFF c\n", 9);
    const auto reader = textio_test::Load(bytes);
    ASSERT_EQ(reader->GetSize(), bytes.size());
    EXPECT_EQ(std::string(reader->GetBuffer(), bytes.size()), bytes);
    EXPECT_EQ(reader->GetBuffer()[bytes.size()], '\0');
    EXPECT_EQ(reader->GetPosition(), 0u);
}

TEST(File, OfOneByteIsRead) {
    const auto reader = textio_test::Load("x");
    EXPECT_EQ(reader->GetSize(), 1u);
    EXPECT_STREQ(reader->GetNextString(), "x");
}

TEST(File, ReplacesTheFileThatWasReadBefore) {
    const TemporaryFolder dir;
    CStringFile reader;
    ASSERT_TRUE(reader.ReadFile(Wide(dir.Write("first", "one two three")).c_str()));
    reader.GetNextString();
    ASSERT_TRUE(reader.ReadFile(Wide(dir.Write("second", "four")).c_str()));
    EXPECT_EQ(reader.GetPosition(), 0u);
    EXPECT_EQ(reader.GetSize(), 4u);
    EXPECT_STREQ(reader.GetNextString(), "four");
    EXPECT_EQ(reader.GetNextString(), nullptr);
}

TEST(Memory, IsHeldAsAFileIs) {
    const std::string bytes("a\r\nb\0\xFF c\n", 9);
    CStringFile reader;
    ASSERT_TRUE(reader.ReadMemory(bytes));
    ASSERT_EQ(reader.GetSize(), bytes.size());
    EXPECT_EQ(std::string(reader.GetBuffer(), bytes.size()), bytes);
    EXPECT_EQ(reader.GetBuffer()[bytes.size()], '\0');
    EXPECT_STREQ(reader.GetNextString(), "a");
    EXPECT_STREQ(reader.GetNextString(), "b");
    EXPECT_EQ(reader.GetNextString(), nullptr);
}

TEST(Memory, IsCopied) {
    std::string bytes = "one two";
    CStringFile reader;
    ASSERT_TRUE(reader.ReadMemory(bytes));
    bytes.assign(bytes.size(), 'x');
    EXPECT_STREQ(reader.GetNextString(), "one");
}

TEST(Memory, OfNoBytesLeavesTheReaderEmpty) {
    CStringFile reader;
    ASSERT_TRUE(reader.ReadMemory("one"));
    EXPECT_FALSE(reader.ReadMemory(""));
    EXPECT_EQ(reader.GetSize(), 0u);
    EXPECT_EQ(reader.GetBuffer(), nullptr);
}

TEST(Memory, ReplacesAFileAndIsReplacedByAFile) {
    const TemporaryFolder dir;
    CStringFile reader;
    ASSERT_TRUE(reader.ReadFile(Wide(dir.Write("first", "one")).c_str()));
    ASSERT_TRUE(reader.ReadMemory("two"));
    EXPECT_STREQ(reader.GetNextString(), "two");
    ASSERT_TRUE(reader.ReadFile(Wide(dir.Write("third", "three")).c_str()));
    EXPECT_STREQ(reader.GetNextString(), "three");
}

// 4 GiB and more do not fit the reader's 32-bit position. No byte of the view is read.
TEST(Memory, IsRefusedIfItHasFourGibibytes) {
    CStringFile reader;
    const char byte = 'x';
    const std::string_view tooLong(&byte, std::size_t{1} << 32);
    EXPECT_FALSE(reader.ReadMemory(tooLong));
    EXPECT_EQ(reader.GetSize(), 0u);
}

TEST(File, IsGoneAfterClear) {
    const auto reader = textio_test::Load("one two");
    reader->GetNextString();
    reader->ClearFile();
    EXPECT_EQ(reader->GetSize(), 0u);
    EXPECT_EQ(reader->GetPosition(), 0u);
    EXPECT_EQ(reader->GetBuffer(), nullptr);
    EXPECT_EQ(reader->GetNextString(), nullptr);
    EXPECT_EQ(reader->GetCurrentLine(), 0u);
    EXPECT_EQ(reader->GetCurrentColumn(), 0u);
}

// `make` creates something in the folder that cannot be loaded, and returns its path.
struct RefusedRow {
    const char* name;
    std::string (*make)(const TemporaryFolder& dir);
};
std::ostream& operator<<(std::ostream& out, const RefusedRow& row) {
    return out << row.name;
}

std::string SparseFile(const TemporaryFolder& dir, std::uintmax_t size) {
    std::string path = dir.Write("sparse", "x");
    std::filesystem::resize_file(path, size);
    return path;
}

const RefusedRow kRefusedRows[] = {
    {"Missing", [](const TemporaryFolder& dir) { return dir.Path("none"); }},
    {"MissingFolder", [](const TemporaryFolder& dir) { return dir.Path("none/file"); }},
    {"EmptyPath", [](const TemporaryFolder&) { return std::string(); }},
    {"EmptyFile", [](const TemporaryFolder& dir) { return dir.Write("empty", ""); }},
    {"Folder", [](const TemporaryFolder& dir) { return dir.Path(); }},
    {"FileAsFolder", [](const TemporaryFolder& dir) { return dir.Write("file", "x") + "/y"; }},
    // The reader must not wait for a writer.
    {"Pipe",
     [](const TemporaryFolder& dir) {
         std::string path = dir.Path("pipe");
         EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
         return path;
     }},
    {"DanglingLink",
     [](const TemporaryFolder& dir) {
         std::string path = dir.Path("link");
         std::filesystem::create_symlink("none", path);
         return path;
     }},
    {"NullDevice", [](const TemporaryFolder&) { return std::string("/dev/null"); }},
    {"EndlessDevice", [](const TemporaryFolder&) { return std::string("/dev/zero"); }},
    {"FourGiB",
     [](const TemporaryFolder& dir) { return SparseFile(dir, std::uintmax_t{1} << 32); }},
    // In 32 bits this size is 5.
    {"FourGiBAndFive",
     [](const TemporaryFolder& dir) { return SparseFile(dir, (std::uintmax_t{1} << 32) + 5); }},
    {"OneTiB", [](const TemporaryFolder& dir) { return SparseFile(dir, std::uintmax_t{1} << 40); }},
};

class RefusedFile : public testing::TestWithParam<RefusedRow> {};

TEST_P(RefusedFile, LeavesTheReaderEmpty) {
    const TemporaryFolder dir;
    const std::wstring path = Wide(GetParam().make(dir));
    CStringFile reader;
    EXPECT_FALSE(reader.ReadFile(path.c_str()));
    EXPECT_EQ(reader.GetSize(), 0u);
    EXPECT_EQ(reader.GetBuffer(), nullptr);
    EXPECT_EQ(reader.GetNextString(), nullptr);
}

TEST_P(RefusedFile, UnloadsTheFileThatWasReadBefore) {
    const TemporaryFolder dir;
    const std::wstring path = Wide(GetParam().make(dir));
    CStringFile reader;
    ASSERT_TRUE(reader.ReadFile(Wide(dir.Write("good", "one two")).c_str()));
    reader.GetNextString();
    EXPECT_FALSE(reader.ReadFile(path.c_str()));
    EXPECT_EQ(reader.GetSize(), 0u);
    EXPECT_EQ(reader.GetPosition(), 0u);
    EXPECT_EQ(reader.GetBuffer(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(, RefusedFile, testing::ValuesIn(kRefusedRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(File, WithoutPermissionIsRefused) {
    const TemporaryFolder dir;
    const std::string path = dir.Write("locked", "x");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    // The superuser may read every file, so the test reads it as another user.
    constexpr uid_t kNobody = 65534;
    const bool isSuperuser = geteuid() == 0;
    ASSERT_TRUE(!isSuperuser || seteuid(kNobody) == 0);
    CStringFile reader;
    EXPECT_FALSE(reader.ReadFile(Wide(path).c_str()));
    ASSERT_TRUE(!isSuperuser || seteuid(0) == 0);
}

struct NamedFile {
    const char* name;
    std::string bytes;     // in the file system
    std::wstring spelled;  // as the host passes it
};
std::ostream& operator<<(std::ostream& out, const NamedFile& row) {
    return out << row.name;
}

const NamedFile kNamedFiles[] = {
    {"Spaces", "a b  c.bvh", L"a b  c.bvh"},
    {"Latin", "\xC3\xA9t\xC3\xA9.bvh", L"\u00E9t\u00E9.bvh"},
    {"Japanese", "\xE6\xAD\xA9\xE3\x81\x8F.bvh", L"\u6B69\u304F.bvh"},
    {"BeyondTheBasicPlane", "\xF0\x9F\x95\xBA", L"\U0001F57A"},
    {"NoUtf8", "a\xFF\x80z", L"a\xDCFF\xDC80z"},
    {"Longest", std::string(255, 'n'), std::wstring(255, L'n')},
    {"Newline", "a\nb", L"a\nb"},
};

class FileName : public testing::TestWithParam<NamedFile> {};

TEST_P(FileName, IsFound) {
    const TemporaryFolder dir;
    dir.Write(GetParam().bytes, "found");
    CStringFile reader;
    const std::wstring path = Wide(dir.Path()) + L"/" + GetParam().spelled;
    ASSERT_TRUE(reader.ReadFile(path.c_str()));
    EXPECT_STREQ(reader.GetNextString(), "found");
}

INSTANTIATE_TEST_SUITE_P(, FileName, testing::ValuesIn(kNamedFiles),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(File, FollowsLinks) {
    const TemporaryFolder dir;
    dir.Write("file", "linked");
    std::filesystem::create_symlink("file", dir.Path("link"));
    CStringFile reader;
    ASSERT_TRUE(reader.ReadFile(Wide(dir.Path("link")).c_str()));
    EXPECT_STREQ(reader.GetNextString(), "linked");
}

TEST(File, LeavesNoDescriptorOpen) {
    const auto openFiles = [] {
        const auto all = std::filesystem::directory_iterator("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    const TemporaryFolder dir;
    const std::wstring good = Wide(dir.Write("good", "x"));
    const std::wstring empty = Wide(dir.Write("empty", ""));
    const auto before = openFiles();
    CStringFile reader;
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(reader.ReadFile(good.c_str()));
        EXPECT_FALSE(reader.ReadFile(empty.c_str()));
        EXPECT_FALSE(reader.ReadFile(Wide(dir.Path()).c_str()));
    }
    EXPECT_EQ(openFiles(), before);
}

}  // namespace
