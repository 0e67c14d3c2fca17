#include "survey/amc_matches.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "threads/for_each.h"
#include "threads/thread_count.h"

namespace survey {
namespace {

// Matching takes less than a quarter of the time that reading takes, which threads::CountFor
// expects.
constexpr std::size_t kMatchesFaster = 4;

}  // namespace

AmcMatches::AmcMatches(const AmcScan& scan, std::string_view text, std::size_t threads, Sizes sizes)
    : scan_(scan), end_(text.data() + text.size()), threads_(threads), sizes_(sizes) {}

const char* AmcMatches::MatchFrame(const char* at, std::uint32_t& number) {
    if (threads_ > 1) {
        if (windowEnd_ == nullptr || (at >= windowEnd_ && at < end_)) MatchWindow(at);
        if (const Match* const match = Find(at)) {
            number = match->number;
            return match->end;
        }
    }
    return scan_.MatchFrame(at, number);
}

void AmcMatches::MatchWindow(const char* first) {
    const std::size_t bytes = std::min(static_cast<std::size_t>(end_ - first), sizes_.window);
    windowEnd_ = first + bytes;
    part_ = match_ = 0;
    parts_.assign((bytes + sizes_.part - 1) / sizes_.part, {});
    threads::ForEach(parts_.size(), threads_, [&](std::size_t index) {
        const char* const begin = first + index * sizes_.part;
        const char* const last =
            begin + std::min(static_cast<std::size_t>(windowEnd_ - begin), sizes_.part);
        try {
            MatchPart(index == 0 ? begin : NextFrame(begin, last), last, parts_[index]);
        } catch (const std::bad_alloc&) {
            // MatchFrame matches the frames that are missing here.
        }
    });
}

// Matches the frames that begin in the part. After a frame that does not match, it goes on with the
// next line that may begin a frame.
void AmcMatches::MatchPart(const char* first, const char* last, Part& part) const {
    for (const char* at = first; at < last;) {
        Match match{at, nullptr, 0};
        match.end = scan_.MatchFrame(at, match.number);
        if (match.end != nullptr) part.push_back(match);
        at = match.end != nullptr ? match.end : NextFrame(at, last);
    }
}

// Returns the first line after `at` and before `last` that begins with a digit, or `last`.
const char* AmcMatches::NextFrame(const char* at, const char* last) const {
    while (at < last) {
        const void* const feed = std::memchr(at, '\n', static_cast<std::size_t>(last - at));
        if (feed == nullptr) return last;
        at = static_cast<const char*>(feed) + 1;
        if (at < last && *at >= '0' && *at <= '9') return at;
    }
    return last;
}

const AmcMatches::Match* AmcMatches::Find(const char* at) {
    for (; part_ < parts_.size(); ++part_, match_ = 0) {
        const Part& part = parts_[part_];
        while (match_ < part.size() && part[match_].at < at)
            ++match_;
        if (match_ == part.size()) continue;
        return part[match_].at == at ? &part[match_] : nullptr;
    }
    return nullptr;
}

std::size_t MatchThreads(std::size_t bytes) {
    return threads::CountFor(bytes / kMatchesFaster);
}

}  // namespace survey
