#include "survey/bvh_plain_rows.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <vector>

#include "survey/bvh_lines.h"
#include "survey/source_text.h"
#include "textio/row_reader.h"
#include "threads/block_order.h"
#include "threads/for_each.h"

namespace survey {
namespace {

class PlainRowFinder {
  public:
    PlainRowFinder(const BvhSection& section, std::string_view text, std::size_t partBytes,
                   BvhFrames& frames)
        : first_(section.motion.rows.at),
          last_(text.data() + text.size()),
          firstLine_(section.motion.rows.line),
          partBytes_(static_cast<std::ptrdiff_t>(partBytes)),
          frames_(frames) {
        frames_.channels = section.channels;
    }

    bool Find(std::size_t rows, std::size_t threads) {
        Divide();
        threads::ForEach(parts_.size(), threads, [this](std::size_t part) { Count(parts_[part]); });
        std::size_t lines = 0;
        for (Part& part : parts_) {
            part.firstRow = lines;
            lines += part.lines;
        }
        if (lines != rows) return false;
        frames_.rows.resize(rows);
        threads::ForEach(parts_.size(), threads, [this](std::size_t part) { Place(parts_[part]); });
        if (hasFailed_) return false;
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
            if (last_ - at > partBytes_) end = LineEnd(at + partBytes_, last_);
            parts_.push_back({at, end});
            at = end;
        }
    }

    static void Count(Part& part) {
        for (const char* at = part.first; at < part.last; ++part.lines)
            at = LineEnd(at, part.last);
    }

    void Place(const Part& part) {
        const char* at = part.first;
        for (std::size_t row = part.firstRow; at < part.last; ++row) {
            const char* const end = LineEnd(at, part.last);
            if (!EndsWithFeed(at, end)) hasFailed_ = true;
            while (at < end && IsBlank(*at))
                ++at;
            frames_.rows[row] = {at, firstLine_ + static_cast<std::uint32_t>(row), true, false};
            at = end;
        }
    }

    // The byte after the next line feed; `last` if there is none.
    static const char* LineEnd(const char* at, const char* last) {
        const void* const feed = std::memchr(at, '\n', static_cast<std::size_t>(last - at));
        return feed == nullptr ? last : static_cast<const char*>(feed) + 1;
    }

    // Whether the line has no carriage return, apart from one before its line feed.
    static bool EndsWithFeed(const char* line, const char* end) {
        const void* const found = std::memchr(line, '\r', static_cast<std::size_t>(end - line));
        return found == nullptr || (found == end - 2 && end[-1] == '\n');
    }

    const char* first_;
    const char* last_;
    std::uint32_t firstLine_;
    std::ptrdiff_t partBytes_;
    BvhFrames& frames_;
    std::vector<Part> parts_;
    std::atomic<bool> hasFailed_ = false;
};

}  // namespace

bool FindPlainRows(const BvhSection& section, std::string_view text, std::size_t rows,
                   std::size_t threads, BvhFrames& frames, std::size_t partBytes) {
    if (rows == 0 || section.channels == 0) return false;
    return PlainRowFinder(section, text, partBytes, frames).Find(rows, threads);
}

// ReadRow needs a NUL at the end of the text, so the last row is read word by word. ReadRow also
// leaves rows with very long numbers to others.
void PlainRowValues::Read(std::size_t first, std::size_t count, double* values) const {
    std::vector<double*> columns(frames_.channels);
    for (std::size_t channel = 0; channel < frames_.channels; ++channel)
        columns[channel] = values + channel;
    for (std::size_t i = 0; i < count; ++i) {
        const BvhRow& row = frames_.rows[first + i];
        // The frames follow each other in memory, so ReadRow is given the index of the frame's
        // first value as that of the row.
        const std::size_t offset = i * frames_.channels;
        const bool isRead =
            first + i + 1 < frames_.Count() &&
            textio::ReadRow(row.at, last_, {columns.data(), columns.size()}, offset) != nullptr;
        if (!isRead) ReadByWords(row, values + offset);
    }
}

void PlainRowValues::ReadByWords(const BvhRow& row, double* values) const {
    RowWords words(row.at, last_);
    for (std::size_t channel = 0; channel < frames_.channels; ++channel)
        ReadRowWord(words.Next(), values[channel]);
}

bool ReadPlainRows(const BvhSection& section, std::string_view text, std::size_t rows,
                   std::size_t threads, BvhFrames& frames, std::size_t partBytes) {
    if (!FindPlainRows(section, text, rows, threads, frames, partBytes)) return false;
    frames.values.resize(rows * frames.channels);
    const std::size_t rowsAtOnce = std::max<std::size_t>(
        1, rows * partBytes / static_cast<std::size_t>(text.end() - section.motion.rows.at));
    const PlainRowValues values(frames, text);
    threads::BlockOrder order(0);
    order.Run((rows + rowsAtOnce - 1) / rowsAtOnce, threads, [&](std::size_t, std::size_t block) {
        const std::size_t first = block * rowsAtOnce;
        values.Read(first, std::min(rowsAtOnce, rows - first),
                    frames.values.data() + first * frames.channels);
    });
    return true;
}

}  // namespace survey
