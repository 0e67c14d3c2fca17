#include "survey/bvh_plain_rows.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "survey/source_text.h"
#include "textio/row_reader.h"
#include "threads/for_each.h"

namespace survey {
namespace {

class PlainRows {
  public:
    PlainRows(const BvhSection& section, std::string_view text, std::size_t partBytes,
              BvhFrames& frames)
        : first_(section.motion.rows.at),
          last_(text.data() + text.size()),
          firstLine_(section.motion.rows.line),
          partBytes_(static_cast<std::ptrdiff_t>(partBytes)),
          frames_(frames) {
        frames_.channels = section.channels;
    }

    bool Read(std::size_t rows, std::size_t threads) {
        Divide();
        threads::ForEach(parts_.size(), threads, [this](std::size_t part) { Count(parts_[part]); });
        std::size_t lines = 0;
        for (Part& part : parts_) {
            part.firstRow = lines;
            lines += part.lines;
        }
        if (lines != rows) return false;
        frames_.rows.resize(rows);
        frames_.values.resize(rows * frames_.channels);
        for (std::size_t channel = 0; channel < frames_.channels; ++channel)
            columns_.push_back(frames_.values.data() + channel);
        threads::ForEach(parts_.size(), threads, [this](std::size_t part) {
            if (!hasFailed_ && !ReadPart(parts_[part])) hasFailed_ = true;
        });
        if (hasFailed_ || !ReadLastRow()) return false;
        frames_.hasOddWhite = false;
        frames_.end = {last_, frames_.rows.back().line};
        return true;
    }

  private:
    // Lines that follow each other.
    struct Part {
        const char* first;
        const char* last;
        std::size_t lines = 0;
        std::size_t firstRow = 0;  // the index of its first row
    };

    void Divide() {
        for (const char* at = first_; at < last_;) {
            const char* end = last_;
            if (last_ - at > partBytes_) {
                end = std::find(at + partBytes_, last_, '\n');
                if (end < last_) ++end;
            }
            parts_.push_back({at, end});
            at = end;
        }
    }

    // The text ends with a word, so the last line has no line feed.
    void Count(Part& part) const {
        part.lines = part.last == last_ ? 1 : 0;
        for (const char* at = part.first; at < part.last; ++part.lines) {
            const auto left = static_cast<std::size_t>(part.last - at);
            const void* const feed = std::memchr(at, '\n', left);
            if (feed == nullptr) return;
            at = static_cast<const char*>(feed) + 1;
        }
    }

    // Reads the rows of the part, except the last row of the text.
    bool ReadPart(const Part& part) {
        const char* at = part.first;
        const std::size_t rows = part.lines - (part.last == last_ ? 1 : 0);
        for (std::size_t i = 0; i < rows; ++i) {
            const std::size_t row = part.firstRow + i;
            Place(row, at);
            const char* const next =
                textio::ReadRow(at, last_, {columns_.data(), columns_.size()}, ValueOf(row));
            if (next == nullptr || !EndsWithFeed(at, next)) return false;
            at = next;
        }
        return true;
    }

    // ReadRow needs a NUL after the text, so the row is copied.
    bool ReadLastRow() {
        const std::size_t row = frames_.Count() - 1;
        const char* at = last_;
        while (at > first_ && at[-1] != '\n')
            --at;
        Place(row, at);
        const std::string copy(at, last_);
        return copy.find('\r') == std::string::npos &&
               textio::ReadRow(copy.data(), copy.data() + copy.size(),
                               {columns_.data(), columns_.size()}, ValueOf(row)) != nullptr;
    }

    // Frames follow each other in memory, so ReadRow is given the index of the frame's first value
    // as that of the row.
    std::size_t ValueOf(std::size_t row) const { return row * frames_.channels; }

    void Place(std::size_t row, const char* line) {
        while (line < last_ && IsBlank(*line))
            ++line;
        frames_.rows[row] = {line, firstLine_ + static_cast<std::uint32_t>(row), true, false};
    }

    // Whether the line has no carriage return, apart from one before its line feed.
    static bool EndsWithFeed(const char* line, const char* next) {
        const auto bytes = static_cast<std::size_t>(next - line);
        const void* const found = std::memchr(line, '\r', bytes);
        return found == nullptr || found == next - 2;
    }

    const char* first_;
    const char* last_;
    std::uint32_t firstLine_;
    std::ptrdiff_t partBytes_;
    BvhFrames& frames_;
    std::vector<Part> parts_;
    std::vector<double*> columns_;
    std::atomic<bool> hasFailed_ = false;
};

}  // namespace

bool ReadPlainRows(const BvhSection& section, std::string_view text, std::size_t rows,
                   std::size_t threads, BvhFrames& frames, std::size_t partBytes) {
    if (rows == 0 || section.channels == 0) return false;
    return PlainRows(section, text, partBytes, frames).Read(rows, threads);
}

}  // namespace survey
