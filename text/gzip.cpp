#include "text/gzip.h"

#include <algorithm>
#include <fmt/format.h>
#include <new>
#include <utility>
#include <zlib.h>

namespace text {
namespace {

constexpr std::string_view kMagic = "\x1F\x8B";
// zlib counts the bytes of a call in 32 bits.
constexpr std::uint64_t kMostAtOnce = std::uint64_t{1} << 30;
// A stated size is believed up to this many times the size of the data. Captures become about a
// fifth as long.
constexpr std::uint64_t kUsualRatio = 16;
// The shortest gzip data: a header, an empty block and a trailer.
constexpr std::size_t kShortest = 20;

constexpr char kCut[] = "its gzip data end too early; the file was probably cut off";

bool IsPadding(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == '\0'; });
}

// Returns the size that the last four bytes of the data state. It is only a hint, because it is
// about the last member alone, and because the data may be wrong.
std::uint64_t StatedSize(std::string_view bytes) {
    if (bytes.size() < kShortest) return 0;
    std::uint64_t size = 0;
    for (const char byte : {bytes.end()[-1], bytes.end()[-2], bytes.end()[-3], bytes.end()[-4]})
        size = size << 8U | static_cast<unsigned char>(byte);
    return std::min(size, bytes.size() * kUsualRatio);
}

// Unpacks the members of gzip data one after the other.
class Members {
  public:
    explicit Members(std::string_view bytes) : rest_(bytes) {
        constexpr int kLargestWindow = 15;
        constexpr int kWithGzipHeader = 16;
        if (inflateInit2(&stream_, kLargestWindow + kWithGzipHeader) != Z_OK)
            throw std::bad_alloc();
    }
    ~Members() { inflateEnd(&stream_); }
    Members(const Members&) = delete;
    Members& operator=(const Members&) = delete;

    // Unpacks at most `room` bytes, and at least one byte, to `out`. Returns their number; 0 after
    // the last byte and after a problem. `room` must not be 0.
    std::size_t Read(char* out, std::size_t room) {
        std::size_t count = 0;
        while (count == 0 && !isAtEnd_)
            count = Inflate(out, room);
        return count;
    }
    // Why the data cannot be unpacked; empty if they can.
    const std::string& Problem() const { return problem_; }

  private:
    // Calls zlib once. Returns how many bytes it unpacked.
    std::size_t Inflate(char* out, std::size_t room) {
        const auto in = static_cast<uInt>(std::min<std::uint64_t>(rest_.size(), kMostAtOnce));
        // zlib does not change the bytes; it only lacks the "const".
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest_.data()));
        stream_.avail_in = in;
        const auto most = static_cast<uInt>(std::min<std::uint64_t>(room, kMostAtOnce));
        stream_.next_out = reinterpret_cast<Bytef*>(out);
        stream_.avail_out = most;
        const int result = inflate(&stream_, Z_NO_FLUSH);
        rest_.remove_prefix(in - stream_.avail_in);
        if (result == Z_STREAM_END)
            BeginNextMember();
        else if (result == Z_MEM_ERROR)
            throw std::bad_alloc();
        else if (result == Z_BUF_ERROR)
            Fail(kCut);
        else if (result != Z_OK)
            Fail(fmt::format("its gzip data are damaged: {}",
                             stream_.msg ? stream_.msg : "unknown kind of data"));
        return most - stream_.avail_out;
    }

    void BeginNextMember() {
        isAtEnd_ = !IsGzip(rest_);
        if (!isAtEnd_) inflateReset(&stream_);
        if (isAtEnd_ && !IsPadding(rest_)) Fail("its gzip data are followed by other bytes");
    }

    void Fail(std::string problem) {
        problem_ = std::move(problem);
        isAtEnd_ = true;
    }

    std::string_view rest_;  // the bytes that were not unpacked yet
    z_stream stream_{};
    bool isAtEnd_ = false;
    std::string problem_;
};

// Returns how many bytes the data unpack to, up to a problem or to about the limit.
std::uint64_t Count(std::string_view bytes, std::uint64_t limit) {
    constexpr std::size_t kAtOnce = std::size_t{64} << 10;
    std::string unpacked(kAtOnce, '\0');
    Members members(bytes);
    std::uint64_t size = 0;
    for (std::size_t count = 1; count > 0 && size < limit; size += count)
        count = members.Read(unpacked.data(), unpacked.size());
    return size;
}

Unpacked TooLarge(std::uint64_t limit) {
    constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;
    const std::string shown =
        limit >= kGiB ? fmt::format("{} GiB", limit / kGiB) : fmt::format("{} bytes", limit);
    return {"", fmt::format("is too large: it unpacks to {} or more, which cannot be read", shown)};
}

}  // namespace

bool IsGzip(std::string_view bytes) {
    return bytes.starts_with(kMagic);
}

Unpacked UnpackGzip(std::string_view bytes, std::uint64_t limit) {
    if (!IsGzip(bytes)) return {"", "does not contain gzip data"};
    Unpacked result;
    std::string& text = result.text;
    limit = std::min<std::uint64_t>(limit, text.max_size());
    // One byte more than the size, so that the end is found without more room.
    text.resize(
        static_cast<std::size_t>(std::clamp(StatedSize(bytes) + 1, std::uint64_t{1}, limit)));
    Members members(bytes);
    std::size_t size = 0;
    while (const std::size_t count = members.Read(text.data() + size, text.size() - size)) {
        size += count;
        if (size < text.size()) continue;
        // The data did not state their size, or it is unusual. The bytes are counted before they
        // get memory, so that few bytes cannot ask for much of it in vain.
        const std::uint64_t all = Count(bytes, limit);
        if (all >= limit) return TooLarge(limit);
        text.resize(static_cast<std::size_t>(all + 1));
    }
    if (!members.Problem().empty()) return {"", members.Problem()};
    text.resize(size);
    return result;
}

}  // namespace text
