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
// The size of the text after it has grown for the first time. Later it doubles.
constexpr std::uint64_t kFirstSize = std::uint64_t{64} << 10;
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
    return std::min<std::uint64_t>(size, bytes.size() * kUsualRatio);
}

class Unpacker {
  public:
    Unpacker(std::string_view bytes, std::uint64_t limit)
        : rest_(bytes), limit_(std::min<std::uint64_t>(limit, text_.max_size())) {
        constexpr int kLargestWindow = 15;
        constexpr int kWithGzipHeader = 16;
        if (inflateInit2(&stream_, kLargestWindow + kWithGzipHeader) != Z_OK)
            throw std::bad_alloc();
        try {
            text_.resize(std::clamp(StatedSize(bytes) + 1, std::uint64_t{1}, limit_));
        } catch (...) {
            inflateEnd(&stream_);
            throw;
        }
    }
    ~Unpacker() { inflateEnd(&stream_); }
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;

    Unpacked Unpack() {
        std::string problem;
        do
            problem = UnpackMember();
        while (problem.empty() && IsGzip(rest_));
        if (problem.empty() && !IsPadding(rest_))
            problem = "its gzip data are followed by other bytes";
        if (!problem.empty()) return {"", problem};
        text_.resize(size_);
        return {std::move(text_), ""};
    }

  private:
    // Unpacks the member with which `rest_` begins, and removes it from there. Returns why it could
    // not be unpacked, or an empty text.
    std::string UnpackMember() {
        inflateReset(&stream_);
        int result = Z_OK;
        while (result == Z_OK) {
            if (size_ == text_.size() && !Grow()) return TooLarge();
            if (rest_.empty()) return kCut;
            result = Inflate();
        }
        if (result == Z_STREAM_END) return size_ < limit_ ? std::string() : TooLarge();
        if (result == Z_MEM_ERROR) throw std::bad_alloc();
        if (result == Z_BUF_ERROR) return kCut;
        return fmt::format("its gzip data are damaged: {}",
                           stream_.msg ? stream_.msg : "unknown kind of data");
    }

    // Unpacks as much as the text has room for. Returns zlib's result.
    int Inflate() {
        const auto in = static_cast<uInt>(std::min<std::uint64_t>(rest_.size(), kMostAtOnce));
        const auto out =
            static_cast<uInt>(std::min<std::uint64_t>(text_.size() - size_, kMostAtOnce));
        // zlib does not change the bytes; it only lacks the "const".
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest_.data()));
        stream_.avail_in = in;
        stream_.next_out = reinterpret_cast<Bytef*>(text_.data() + size_);
        stream_.avail_out = out;
        const int result = inflate(&stream_, Z_NO_FLUSH);
        rest_.remove_prefix(in - stream_.avail_in);
        size_ += out - stream_.avail_out;
        return result;
    }

    // Makes room for more text. Returns whether the limit allows it.
    bool Grow() {
        if (size_ >= limit_) return false;
        text_.resize(std::min(limit_, std::max<std::uint64_t>(kFirstSize, text_.size() * 2)));
        return true;
    }

    std::string TooLarge() const {
        constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;
        const std::string limit =
            limit_ >= kGiB ? fmt::format("{} GiB", limit_ / kGiB) : fmt::format("{} bytes", limit_);
        return fmt::format("is too large: it unpacks to {} or more, which cannot be read", limit);
    }

    std::string_view rest_;  // the bytes that were not unpacked yet
    z_stream stream_{};
    std::string text_;        // the unpacked bytes, and room for more
    std::uint64_t size_ = 0;  // the number of unpacked bytes
    std::uint64_t limit_;     // a text of this many bytes is too large
};

}  // namespace

bool IsGzip(std::string_view bytes) {
    return bytes.starts_with(kMagic);
}

Unpacked UnpackGzip(std::string_view bytes, std::uint64_t limit) {
    if (!IsGzip(bytes)) return {"", "does not contain gzip data"};
    return Unpacker(bytes, limit).Unpack();
}

}  // namespace text
