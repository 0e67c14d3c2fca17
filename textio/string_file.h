// A text file that is loaded into memory and read token by token. Separator characters divide the
// text into tokens. Tokens are bytes, and no character set is converted. A NUL byte ends the text.
// Lines and columns are counted from 0.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "memory/text_memory.h"

class CStringFile {
  public:
    // Creates a reader without a file. Its separators are tab, carriage return, line feed and
    // space.
    CStringFile();
    ~CStringFile();
    CStringFile(const CStringFile&) = delete;
    CStringFile& operator=(const CStringFile&) = delete;

    // Replaces the separators, for this file and all later files. If `set` is empty or memory runs
    // out, returns false and the separators stay unchanged.
    bool RegisterWhiteSpaces(const char* set);

    // Loads a file. The file must be seekable, must not be empty, and must be smaller than 4 GiB.
    // A large file is mapped into memory; see TextMemory::Map.
    // If it cannot be loaded, returns false, and the reader has no file. The characters of the path
    // are encoded as UTF-8. The characters from U+DC80 to U+DCFF are an exception: they become the
    // single bytes 0x80 to 0xFF. A path can therefore also name a file whose name is not valid
    // UTF-8.
    bool ReadFile(const wchar_t* path);
    // Copies `bytes` and treats them as the contents of a file. The limits on the size are the same
    // as for a file.
    bool ReadMemory(std::string_view bytes);
    void ClearFile();

    // Returns the next token and moves past it. Returns null at the end of the text. The token is
    // valid until the reader reads another token or file.
    const char* GetNextString();
    // Returns the next token, but does not move past it. If only separators are left, moves past
    // them and returns null.
    const char* PeekNextString();

    // Converts the next token to a number, as atoi and atof do, and moves past the token. Returns
    // false if there is no token. Also returns false if the number is zero and the token does not
    // begin with "0" or "-0". When the result is false, `value` is unchanged. The position is also
    // unchanged, with one exception: if only separators were left, it is now the end of the text.
    bool GetNextInt(int& value);
    bool GetNextFloat(double& value);

    // Moves to the first character after the next line feed. If there is no further line feed, or
    // no character after it, returns false and does not move.
    bool GotoNextLine();

    // Return the line and the column of the present position. The running time grows with the
    // distance from the position of the last call.
    std::uint32_t GetCurrentLine() const;
    std::uint32_t GetCurrentColumn() const;

    // Moves to a byte offset in the file. If the offset is not less than the size of the file,
    // returns false and does not move.
    bool SetPosition(unsigned int newPosition);
    std::uint32_t GetPosition() const { return position; }
    std::uint32_t GetSize() const { return size; }
    // Returns the file's bytes, followed by a NUL. Returns null if the reader has no file.
    char* GetBuffer() { return buffer.Data(); }

  private:
    struct Token {
        const char* first;
        const char* last;
    };
    bool IsSeparator(char c) const { return isSeparator[static_cast<unsigned char>(c)]; }
    // Takes the memory of the text, and allocates memory for its longest token. If `text` is empty,
    // or memory runs out, returns false, and the reader has no file.
    bool Keep(memory::TextMemory text, std::size_t bytes);
    // Uses the first `bytes` bytes of the buffer as the text of the file. If `bytes` is 0, returns
    // false, and the reader has no file.
    bool KeepText(std::size_t bytes);
    // Moves to the next token. Returns false at the end of the text.
    bool SkipSeparators();
    // Moves past the token at the position.
    Token ConsumeToken();
    // Copies the token into the reader's token buffer and ends it with a NUL.
    const char* Copy(Token found);
    void MoveTo(const char* at);

    const char* Text() const { return buffer.Data(); }

    memory::TextMemory buffer;
    std::unique_ptr<char[]> separators;
    std::unique_ptr<char[]> token;
    std::uint32_t size = 0;
    std::uint32_t position = 0;

    std::array<bool, 256> isSeparator{};
    // The results of the last calls of GetCurrentLine and GetCurrentColumn. The next call begins to
    // search at the byte offset `position`, and not at the start of the file.
    struct LineMark {
        std::uint32_t position = 0;
        std::uint32_t line = 0;
    };
    struct LineStart {
        std::uint32_t position = 0;
        std::uint32_t start = 0;  // the byte offset of the start of the line
    };
    mutable LineMark lineMark;
    mutable LineStart lineStart;
};
