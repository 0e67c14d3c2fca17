#include "files/stream_text.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

namespace stream_text_test {

using files::ReadStream;
using files::StreamText;

std::string Lines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line)
        text += std::to_string(line) + '\n';
    return text;
}

// Opens the path, reads it as a stream, and closes it.
StreamText ReadPath(const std::string& path, std::uint64_t limit = text::kTooLarge) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    StreamText result = ReadStream(file, limit);
    close(file);
    return result;
}

// Writes the text to a pipe, in pieces, while the pipe is read.
StreamText ReadPipe(const std::string& text, int flags = 0, std::uint64_t limit = text::kTooLarge) {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC | flags), 0);
    std::thread writer([&] {
        constexpr std::size_t kPiece = 1000;
        for (std::size_t at = 0; at < text.size();) {
            const ssize_t count =
                write(ends[1], text.data() + at, std::min(kPiece, text.size() - at));
            if (count > 0) at += static_cast<std::size_t>(count);
            if (count < 0 && errno != EAGAIN) break;
        }
        close(ends[1]);
    });
    StreamText result = ReadStream(ends[0], limit);
    // If not all was read, the writer must not wait for ever.
    std::string rest(text.size() + 1, '\0');
    if (!result.problem.empty())
        while (read(ends[0], rest.data(), rest.size()) > 0) {
        }
    writer.join();
    close(ends[0]);
    return result;
}

TEST(ReadStream, ReadsAPipeToItsEnd) {
    for (const int count : {0, 1, 100, 200000}) {
        const std::string text = Lines(count);
        for (const int flags : {0, O_NONBLOCK}) {
            const StreamText read = ReadPipe(text, flags);
            EXPECT_EQ(read.problem, "");
            EXPECT_TRUE(read.text == text) << count;
        }
    }
}

TEST(ReadStream, ReadsAFileFromItsPosition) {
    const support::TemporaryFolder folder;
    const std::string path = folder.Write("walk.bvh", Lines(100000));
    EXPECT_TRUE(ReadPath(path).text == Lines(100000));
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    lseek(file, 10, SEEK_SET);
    EXPECT_TRUE(ReadStream(file).text == Lines(100000).substr(10));
    close(file);
    EXPECT_EQ(ReadPath(folder.Write("empty.bvh", "")).text, "");
    EXPECT_EQ(ReadPath("/dev/null").text, "");
}

TEST(ReadStream, SaysWhyItCannotRead) {
    const support::TemporaryFolder folder;
    EXPECT_EQ(ReadPath(folder.Path()).problem, "is a folder");
    folder.Write("large.bvh", "");
    std::filesystem::resize_file(folder.Path("large.bvh"), std::uintmax_t{1} << 32);
    EXPECT_EQ(ReadPath(folder.Path("large.bvh")).problem,
              "is too large: files of 4 GiB and more cannot be read");
    EXPECT_NE(ReadStream(-1).problem, "");
}

TEST(ReadStream, RefusesTheLimitAndMore) {
    const support::TemporaryFolder folder;
    const std::string path = folder.Write("walk.bvh", Lines(1000));
    const std::size_t size = Lines(1000).size();
    EXPECT_EQ(ReadPath(path, size + 1).problem, "");
    EXPECT_NE(ReadPath(path, size).problem, "");
    EXPECT_EQ(ReadPipe(Lines(1000), 0, size + 1).problem, "");
    EXPECT_NE(ReadPipe(Lines(1000), 0, size).problem, "");
    EXPECT_EQ(ReadPipe(Lines(100000), 0, size).text, "");
}

}  // namespace stream_text_test
