#include "textio/string_file.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "textio/number.h"

namespace {

// Files of this size and more are mapped into memory.
constexpr std::size_t kFewestMappedBytes = std::size_t{1} << 20;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

void AppendUtf8(std::string& bytes, char32_t c) {
    const auto tail = [&](int shift) { bytes += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        bytes += static_cast<char>(c);
    } else if (c < 0x800) {
        bytes += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        bytes += static_cast<char>(0xE0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xF0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string PathBytes(const wchar_t* path) {
    std::string bytes;
    for (; *path != L'\0'; ++path) {
        const auto c = static_cast<char32_t>(*path);
        if (c >= 0xDC80 && c <= 0xDCFF)
            bytes += static_cast<char>(c - 0xDC00);
        else
            AppendUtf8(bytes, c);
    }
    return bytes;
}

// O_NONBLOCK is needed for a pipe that no process writes to. Without this flag, `open` would wait
// until a process opens the pipe for writing.
FileHandle OpenFile(const wchar_t* path) {
    const int descriptor = open(PathBytes(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    FileHandle file(fdopen(descriptor, "r"));
    if (!file) close(descriptor);
    return file;
}

// Returns the size of the file in bytes, or a negative number if the file is not seekable. The file
// position is 0 after a successful call.
off_t FileSize(std::FILE* file) {
    if (fseeko(file, 0, SEEK_END) != 0) return -1;
    const off_t end = ftello(file);
    return fseeko(file, 0, SEEK_SET) == 0 ? end : -1;
}

}  // namespace

CStringFile::CStringFile() {
    RegisterWhiteSpaces("\t\r\n ");
}

CStringFile::~CStringFile() {
    ClearFile();
}

bool CStringFile::RegisterWhiteSpaces(const char* set) {
    const std::size_t length = std::strlen(set);
    if (length == 0) return false;
    std::unique_ptr<char[]> copy(new (std::nothrow) char[length + 1]);
    if (!copy) return false;
    std::memcpy(copy.get(), set, length + 1);
    separators = std::move(copy);
    isSeparator.fill(false);
    for (const char* c = separators.get(); *c != '\0'; ++c)
        isSeparator[static_cast<unsigned char>(*c)] = true;
    return true;
}

bool CStringFile::ReadFile(const wchar_t* path) {
    ClearFile();
    if (!separators) return false;
    const FileHandle file = OpenFile(path);
    if (!file) return false;
    const off_t end = FileSize(file.get());
    if (end < 0 || end > std::numeric_limits<std::uint32_t>::max()) return false;
    const auto bytes = static_cast<std::size_t>(end);
    // Mapping a large file takes less time and memory than copying it.
    if (bytes >= kFewestMappedBytes &&
        Keep(memory::TextMemory::Map(fileno(file.get()), bytes), bytes))
        return KeepText(bytes);
    return Keep(memory::TextMemory::Allocate(bytes), bytes) &&
           KeepText(std::fread(GetBuffer(), 1, bytes, file.get()));
}

bool CStringFile::ReadMemory(std::string_view bytes) {
    ClearFile();
    if (!separators || bytes.size() > std::numeric_limits<std::uint32_t>::max()) return false;
    if (!Keep(memory::TextMemory::Allocate(bytes.size()), bytes.size())) return false;
    bytes.copy(GetBuffer(), bytes.size());
    return KeepText(bytes.size());
}

bool CStringFile::Keep(memory::TextMemory text, std::size_t bytes) {
    buffer = std::move(text);
    token.reset(new (std::nothrow) char[bytes + 1]);
    if (buffer && token) return true;
    ClearFile();
    return false;
}

bool CStringFile::KeepText(std::size_t bytes) {
    if (bytes == 0) {
        ClearFile();
        return false;
    }
    size = static_cast<std::uint32_t>(bytes);
    GetBuffer()[size] = '\0';
    return true;
}

void CStringFile::ClearFile() {
    buffer = {};
    token.reset();
    size = 0;
    position = 0;
    lineMark = {};
    lineStart = {};
}

// A NUL follows the last byte and is never a separator, so the loops of SkipSeparators and
// ConsumeToken end there without checking the size.
bool CStringFile::SkipSeparators() {
    if (position >= size) return false;
    const char* at = Text() + position;
    while (IsSeparator(*at))
        ++at;
    MoveTo(at);
    return *at != '\0';
}

CStringFile::Token CStringFile::ConsumeToken() {
    const char* const first = Text() + position;
    const char* last = first;
    while (*last != '\0' && !IsSeparator(*last))
        ++last;
    MoveTo(last);
    return {first, last};
}

// A NUL byte ends the text, even if it is inside the file. The position is then the size of the
// file.
void CStringFile::MoveTo(const char* at) {
    position = *at == '\0' ? size : static_cast<std::uint32_t>(at - Text());
}

const char* CStringFile::Copy(Token found) {
    const auto length = static_cast<std::size_t>(found.last - found.first);
    std::memcpy(token.get(), found.first, length);
    token[length] = '\0';
    return token.get();
}

const char* CStringFile::GetNextString() {
    if (!SkipSeparators()) return nullptr;
    return Copy(ConsumeToken());
}

const char* CStringFile::PeekNextString() {
    const std::uint32_t remembered = position;
    const char* const next = GetNextString();
    if (next != nullptr) position = remembered;
    return next;
}

bool CStringFile::GetNextInt(int& value) {
    const std::uint32_t remembered = position;
    const char* const text = GetNextString();
    if (text == nullptr) return false;
    const int number = textio::ToInt(text);
    if (number == 0 && !textio::IsAcceptedZero(text)) {
        position = remembered;
        return false;
    }
    value = number;
    return true;
}

bool CStringFile::GetNextFloat(double& value) {
    const std::uint32_t remembered = position;
    if (!SkipSeparators()) return false;
    const char* const first = Text() + position;
    double number = 0.0;
    const char* const end = textio::ReadPlainDecimal(first, Text() + size, number);
    if (end != nullptr && (*end == '\0' || IsSeparator(*end))) {
        MoveTo(end);
        value = number;
        return true;
    }
    const char* const text = Copy(ConsumeToken());
    number = textio::ToDouble(text);
    if (number == 0.0 && !textio::IsAcceptedZero(text)) {
        position = remembered;
        return false;
    }
    value = number;
    return true;
}

bool CStringFile::GotoNextLine() {
    if (position >= size) return false;
    const std::string_view rest(Text() + position, size - position);
    const std::size_t feed = rest.find('\n');
    if (feed == std::string_view::npos || feed + 1 == rest.size()) return false;
    if (rest.substr(0, feed).find('\0') != std::string_view::npos) return false;
    position += static_cast<std::uint32_t>(feed) + 1;
    return true;
}

std::uint32_t CStringFile::GetCurrentLine() const {
    if (position == 0 || !buffer) return 0;
    const auto feedsBetween = [this](std::uint32_t from, std::uint32_t to) {
        return static_cast<std::uint32_t>(std::count(Text() + from, Text() + to, '\n'));
    };
    if (position >= lineMark.position)
        lineMark.line += feedsBetween(lineMark.position, position);
    else
        lineMark.line -= feedsBetween(position, lineMark.position);
    lineMark.position = position;
    return lineMark.line;
}

std::uint32_t CStringFile::GetCurrentColumn() const {
    if (position == 0 || !buffer) return 0;
    const std::string_view text(Text(), position);
    const bool forward = position >= lineStart.position;
    const std::size_t searched = forward ? lineStart.position : 0;
    if (forward || position < lineStart.start) {
        const std::size_t feed = text.substr(searched).rfind('\n');
        if (feed != std::string_view::npos)
            lineStart.start = static_cast<std::uint32_t>(searched + feed) + 1;
        else if (!forward)
            lineStart.start = 0;
    }
    lineStart.position = position;
    return position - lineStart.start;
}

bool CStringFile::SetPosition(unsigned int newPosition) {
    if (newPosition >= size) return false;
    position = newPosition;
    return true;
}
