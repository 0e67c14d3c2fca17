// A whole text file in memory, read as tokens between separator characters. Tokens are bytes; no
// character set is converted. A NUL byte ends the text. Lines and columns are counted from 0.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "memory/large_memory.h"

class CStringFile {
  public:
    // Holds no file yet. The separators are tab, carriage return, line feed and space.
    CStringFile();
    ~CStringFile();
    CStringFile(const CStringFile&) = delete;
    CStringFile& operator=(const CStringFile&) = delete;

    // Replaces the separators, for this file and later ones. Returns false, and keeps the old set,
    // when `set` is empty or memory runs out.
    bool RegisterWhiteSpaces(const char* set);

    // Loads the file, which must be seekable and hold from 1 byte to less than 4 GiB. Returns
    // false, holding no file, when it cannot be loaded. The path's characters become UTF-8; those
    // from U+DC80 to U+DCFF become the single bytes 0x80 to 0xFF, so that a path can also name a
    // file whose name is not UTF-8.
    bool ReadFile(const wchar_t* path);
    // Holds a copy of these bytes, as if they had been read from a file, with the same limits.
    bool ReadMemory(std::string_view bytes);
    void ClearFile();

    // The next token, or null at the end. It is valid until the reader reads another token.
    const char* GetNextString();
    // The same token, but the position stays. When only separators are left, it moves past them.
    const char* PeekNextString();

    // Reads the next token as a number, as atoi and atof do. Returns false when there is no token,
    // or when the number is zero and the token does not begin with "0" or "-0". Then `value` is
    // unchanged and the position stays; when only separators were left, it moves past them.
    bool GetNextInt(int& value);
    bool GetNextFloat(double& value);

    // Moves to the first character after the next line feed. Returns false, and does not move, when
    // no character follows a line feed.
    bool GotoNextLine();

    // The line and column of the position. The cost grows with the distance from the position of
    // the last call.
    std::uint32_t GetCurrentLine() const;
    std::uint32_t GetCurrentColumn() const;

    // Returns false, and does not move, when `newPosition` is not inside the file.
    bool SetPosition(unsigned int newPosition);
    std::uint32_t GetPosition() const { return position; }
    std::uint32_t GetSize() const { return size; }
    // The file's bytes followed by a NUL; null while no file is held.
    char* GetBuffer() { return static_cast<char*>(buffer.get()); }

  private:
    struct Token {
        const char* first;
        const char* last;
    };
    bool IsSeparator(char c) const { return isSeparator[static_cast<unsigned char>(c)]; }
    // Allocates memory for the file and for its longest token. Returns false when memory runs out.
    bool Allocate(std::size_t bytes);
    // Keeps the first `bytes` of the allocated memory as the file's text; false when there are
    // none.
    bool KeepText(std::size_t bytes);
    // Moves to the next token. Returns false at the end of the text.
    bool SkipSeparators();
    // Moves past the token at the position.
    Token ConsumeToken();
    // Copies the token into the reader's token buffer and ends it with a NUL.
    const char* Copy(Token found);
    void MoveTo(const char* at);

    const char* Text() const { return static_cast<const char*>(buffer.get()); }

    memory::LargeMemory buffer;
    std::unique_ptr<char[]> separators;
    std::unique_ptr<char[]> token;
    std::uint32_t size = 0;
    std::uint32_t position = 0;

    std::array<bool, 256> isSeparator{};
    // What the last calls of GetCurrentLine and GetCurrentColumn found, so that the next ones need
    // not count from the start of the file.
    struct LineMark {
        std::uint32_t position = 0;
        std::uint32_t line = 0;
    };
    struct LineStart {
        std::uint32_t position = 0;
        std::uint32_t start = 0;
    };
    mutable LineMark lineMark;
    mutable LineStart lineStart;
};
