#include "files/mapped_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

namespace {

using files::MappedFile;

TEST(MappedFile, IsTheWholeTextWithANulAfterIt) {
    const support::TemporaryFolder folder;
    // The last of the sizes fills a whole page.
    for (const std::size_t size : {std::size_t{1}, std::size_t{4095}, std::size_t{4096}}) {
        const std::string text(size, 'x');
        folder.Write("walk.bvh", text);
        const MappedFile file(folder.Path("walk.bvh"));
        EXPECT_EQ(file.Problem(), "");
        EXPECT_EQ(file.Text(), text);
        EXPECT_EQ(*(file.Text().data() + size), '\0');
    }
}

TEST(MappedFile, MayBeEmpty) {
    const support::TemporaryFolder folder;
    folder.Write("empty.bvh", "");
    const MappedFile file(folder.Path("empty.bvh"));
    EXPECT_EQ(file.Problem(), "");
    EXPECT_TRUE(file.Text().empty());
    EXPECT_EQ(*file.Text().data(), '\0');
}

TEST(MappedFile, SaysWhyItCannotBeRead) {
    const support::TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("folder.bvh"));
    ASSERT_EQ(mkfifo(folder.Path("fifo.bvh").c_str(), 0600), 0);
    folder.Write("large.bvh", "");
    std::filesystem::resize_file(folder.Path("large.bvh"), std::uintmax_t{1} << 32);
    EXPECT_EQ(MappedFile(folder.Path("missing.bvh")).Problem(), "no such file");
    EXPECT_EQ(MappedFile(folder.Path("folder.bvh")).Problem(), "is a folder");
    EXPECT_EQ(MappedFile(folder.Path("fifo.bvh")).Problem(), "is not a regular file");
    EXPECT_EQ(MappedFile(folder.Path("large.bvh")).Problem(),
              "is too large: files of 4 GiB and more cannot be read");
    EXPECT_EQ(MappedFile(folder.Path("folder.bvh/walk.bvh")).Problem(), "no such file");
}

// Root may read every file, so there is no problem for root.
TEST(MappedFile, SaysThatPermissionIsDenied) {
    const support::TemporaryFolder folder;
    folder.Write("walk.bvh", "text");
    chmod(folder.Path("walk.bvh").c_str(), 0);
    const std::string expected = geteuid() == 0 ? "" : "permission denied";
    EXPECT_EQ(MappedFile(folder.Path("walk.bvh")).Problem(), expected);
}

}  // namespace
