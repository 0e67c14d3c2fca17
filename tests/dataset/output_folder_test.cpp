#include "dataset/output_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

#include "tests/support/temporary_folder.h"

namespace output_folder_test {

using dataset::OutputFolder;

bool Exists(const std::string& path) {
    return std::filesystem::exists(path);
}

TEST(OutputFolder, IsRemovedUnlessItIsKept) {
    const support::TemporaryFolder folder;
    { const OutputFolder output(folder.Path("a/b/")); }
    EXPECT_FALSE(Exists(folder.Path("a")));
    OutputFolder(folder.Path("a/b/")).Keep();
    EXPECT_TRUE(Exists(folder.Path("a/b")));
    { const OutputFolder output(folder.Path("a/b/c")); }
    EXPECT_TRUE(Exists(folder.Path("a/b")));
    EXPECT_FALSE(Exists(folder.Path("a/b/c")));
}

TEST(OutputFolder, IsNotRemovedIfItIsNotEmpty) {
    const support::TemporaryFolder folder;
    {
        const OutputFolder output(folder.Path("a/b"));
        folder.Write("a/x", "");
    }
    EXPECT_TRUE(Exists(folder.Path("a/x")));
    EXPECT_FALSE(Exists(folder.Path("a/b")));
}

TEST(OutputFolder, LeavesNothingIfItCannotBeCreated) {
    const support::TemporaryFolder folder;
    const std::string tooLong(300, 'x');
    folder.Write("file", "");
    EXPECT_THROW(OutputFolder(folder.Path("a/b/" + tooLong)), std::filesystem::filesystem_error);
    EXPECT_THROW(OutputFolder(folder.Path("file/b")), std::filesystem::filesystem_error);
    EXPECT_THROW(OutputFolder(folder.Path("file")), std::filesystem::filesystem_error);
    EXPECT_EQ(folder.Names(), std::set<std::string>{"file"});
}

}  // namespace output_folder_test
