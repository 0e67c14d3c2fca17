#include "survey/row_scan_parts.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <new>
#include <vector>

#include "threads/for_each.h"
#include "threads/thread_count.h"

namespace survey {
namespace {

// Scanning takes less than a quarter of the time that reading takes, which threads::CountFor
// expects.
constexpr std::size_t kFasterThanReading = 4;
// A section may end soon, so each round scans only so many times the bytes of the round before.
constexpr std::uint64_t kGrowth = 64;

// Scans the parts of a text that begins with a line.
class PartScanner {
  public:
    PartScanner(std::string_view text, std::size_t words, std::size_t partBytes,
                ByteMasksKernel kernel)
        : text_(text),
          words_(words),
          partBytes_(partBytes),
          kernel_(kernel),
          parts_(text.size() / partBytes + 1),
          stop_(parts_.size()) {}

    RowScan Scan(std::size_t threads) {
        threads::ForEach(parts_.size(), threads, [this](std::size_t index) {
            try {
                ScanPart(index);
            } catch (...) {
                hasFailed_ = true;
            }
        });
        // Words of unusual forms are copied, which takes memory. Nothing else fails.
        if (hasFailed_) throw std::bad_alloc();
        return Joined();
    }

  private:
    struct Part {
        bool exists = false;  // whether a line begins in the part
        RowScan scan;
    };

    // Scans the lines that begin in this part, unless an earlier part has ended the rows.
    void ScanPart(std::size_t index) {
        if (index > stop_.load(std::memory_order_relaxed)) return;
        const std::size_t first = LineStartIn(index);
        if (first == std::string_view::npos) return;
        std::size_t last = text_.size();
        for (std::size_t next = index + 1; next < parts_.size(); ++next) {
            const std::size_t start = LineStartIn(next);
            if (start == std::string_view::npos) continue;
            last = start;
            break;
        }
        Part& part = parts_[index];
        part.exists = true;
        part.scan = ScanRows(text_.substr(first, last - first), words_, kernel_);
        if (!part.scan.plain || part.scan.end != text_.data() + last) StopAt(index);
    }

    // Returns the byte offset of the first line that begins in the part, or npos. Only line feeds
    // count, because a carriage return may be followed by one.
    std::size_t LineStartIn(std::size_t index) const {
        if (index == 0) return 0;
        const std::size_t begin = index * partBytes_ - 1;
        const std::string_view part = text_.substr(begin, partBytes_);
        const std::size_t feed = part.find('\n');
        return feed == std::string_view::npos ? feed : begin + feed + 1;
    }

    void StopAt(std::size_t index) {
        std::size_t stop = stop_.load(std::memory_order_relaxed);
        while (index < stop && !stop_.compare_exchange_weak(stop, index, std::memory_order_relaxed))
            continue;
    }

    RowScan Joined() const {
        const std::size_t stop = stop_.load(std::memory_order_relaxed);
        RowScan joined{0, true, text_.data() + text_.size()};
        for (std::size_t index = 0; index < parts_.size() && index <= stop; ++index) {
            const Part& part = parts_[index];
            if (!part.exists) continue;
            joined.rows += part.scan.rows;
            if (index < stop) continue;
            joined.plain = part.scan.plain;
            joined.end = part.scan.end;
        }
        return joined;
    }

    std::string_view text_;
    std::size_t words_;
    std::size_t partBytes_;
    ByteMasksKernel kernel_;
    std::vector<Part> parts_;
    // The index of the first known part in which the rows end or the scan stopped; the number of
    // parts if there is none.
    std::atomic<std::size_t> stop_;
    std::atomic<bool> hasFailed_ = false;  // whether memory ran out
};

// Returns how many bytes of the text the next round scans: at least `bytes`, up to a line feed. If
// there is no line feed soon after them, the round scans all.
std::size_t RoundLength(std::string_view text, std::uint64_t bytes, std::size_t partBytes) {
    if (bytes >= text.size()) return text.size();
    const auto first = static_cast<std::size_t>(bytes);
    const std::size_t feed = text.substr(first, partBytes).find('\n');
    return feed == std::string_view::npos ? text.size() : first + feed + 1;
}

}  // namespace

RowScan ScanRowsInParts(std::string_view text, std::size_t words, std::size_t threads,
                        std::size_t partBytes, ByteMasksKernel kernel) {
    if (threads == 1) return ScanRows(text, words, kernel);
    RowScan all;
    for (std::uint64_t parts = 1;; parts *= kGrowth) {
        const std::size_t length = RoundLength(text, parts * partBytes, partBytes);
        const std::string_view round = text.substr(0, length);
        const RowScan scan = parts == 1
                                 ? ScanRows(round, words, kernel)
                                 : PartScanner(round, words, partBytes, kernel).Scan(threads);
        all = {all.rows + scan.rows, scan.plain, scan.end};
        if (!scan.plain || scan.end != round.data() + length || length == text.size()) return all;
        text.remove_prefix(length);
    }
}

std::size_t ScanThreads(std::size_t bytes) {
    return threads::CountFor(bytes / kFasterThanReading);
}

}  // namespace survey
