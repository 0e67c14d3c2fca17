#include "memory/text_memory.h"

#include <cstddef>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

using memory::TextMemory;

// An open file that has no name.
class OpenFile {
  public:
    explicit OpenFile(const std::string& bytes) : file_(std::tmpfile()) {
        std::fwrite(bytes.data(), 1, bytes.size(), file_);
        std::fflush(file_);
    }
    ~OpenFile() { std::fclose(file_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Descriptor() const { return fileno(file_); }
    std::string Bytes() const {
        std::string bytes;
        std::rewind(file_);
        for (int c = std::fgetc(file_); c != EOF; c = std::fgetc(file_))
            bytes += static_cast<char>(c);
        return bytes;
    }
    void Append(const std::string& bytes) const {
        std::fseek(file_, 0, SEEK_END);
        std::fwrite(bytes.data(), 1, bytes.size(), file_);
        std::fflush(file_);
    }

  private:
    std::FILE* file_;
};

TEST(TextMemory, IsEmptyAtFirst) {
    EXPECT_FALSE(TextMemory());
    EXPECT_EQ(TextMemory().Data(), nullptr);
}

TEST(TextMemory, EndsWithANul) {
    for (const std::size_t bytes : {0, 1, 4095, 4096, 3000000}) {
        const TextMemory text = TextMemory::Allocate(bytes);
        ASSERT_TRUE(text);
        EXPECT_EQ(text.Data()[bytes], '\0');
    }
}

TEST(TextMemory, CanBeMoved) {
    TextMemory text = TextMemory::Allocate(10);
    const char* const data = text.Data();
    TextMemory other = std::move(text);
    EXPECT_EQ(other.Data(), data);
    text = std::move(other);
    EXPECT_EQ(text.Data(), data);
    text = {};
    EXPECT_FALSE(text);
}

class MappedText : public testing::TestWithParam<std::size_t> {};

TEST_P(MappedText, HasTheBytesOfTheFileAndANul) {
    const std::string bytes(GetParam(), 'x');
    const OpenFile file(bytes);
    const TextMemory text = TextMemory::Map(file.Descriptor(), bytes.size());
    ASSERT_TRUE(text);
    EXPECT_EQ(std::string(text.Data()), bytes);
    file.Append("more");
    EXPECT_EQ(std::string(text.Data()), bytes) << "the NUL stays when the file becomes longer";
    text.Data()[0] = 'y';
    EXPECT_EQ(file.Bytes(), bytes + "more") << "the file does not change";
}

INSTANTIATE_TEST_SUITE_P(, MappedText, testing::Values(1, 4095, 4096, 4097, 8192, 100000));

TEST(TextMemory, IsEmptyIfTheFileCannotBeMapped) {
    EXPECT_FALSE(TextMemory::Map(-1, 100));
    EXPECT_FALSE(TextMemory::Map(0, ~std::size_t{0}));
}

}  // namespace
