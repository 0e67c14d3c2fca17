#include "tests/fuzz/grammar_mutator.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <span>
#include <vector>

namespace fuzz {
namespace {

constexpr const char* kBvhWords[] = {
    "HIERARCHY", "ROOT",      "JOINT",     "End",       "Site",      "End Site",  "{",
    "}",         "OFFSET",    "CHANNELS",  "MOTION",    "Frames:",   "Frame",     "Time:",
    "Xposition", "Yposition", "Zposition", "Xrotation", "Yrotation", "Zrotation", "probe"};
constexpr const char* kAcclaimWords[] = {":version",    ":name",
                                         ":units",      "mass",
                                         "length",      "angle",
                                         "deg",         "rad",
                                         ":root",       ":bonedata",
                                         ":hierarchy",  "order",
                                         "axis",        "position",
                                         "TX",          "TY",
                                         "TZ",          "RX",
                                         "RY",          "RZ",
                                         "orientation", "begin",
                                         "end",         "id",
                                         "name",        "dof",
                                         "rx",          "ry",
                                         "rz",          "tx",
                                         "|",           "limits",
                                         "inf",         "-inf",
                                         "direction",   "XYZ",
                                         "zyx",         "root",
                                         ":DEGREES",    "#",
                                         "~",           ":documentation",
                                         ":RADIANS",    ":FULLY-SPECIFIED"};
constexpr const char* kNumbers[] = {"0",           "-0",
                                    "1",           "-1",
                                    "2",           "7",
                                    "0.5",         "90",
                                    "-90",         "180",
                                    "1e-320",      "1e308",
                                    "1e999",       "-1e999",
                                    "nan",         "inf",
                                    "0x10",        "2147483647",
                                    "-2147483648", "4294967295",
                                    "4294967296",  "99999999999999999999",
                                    "0.1e",        ".",
                                    "1,5"};

struct Span {
    std::size_t first = 0;
    std::size_t last = 0;  // one past the end
};

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
bool IsNumber(std::string_view token) {
    return token.find_first_of("0123456789") != std::string_view::npos &&
           token.find_first_not_of("+-.0123456789eE") == std::string_view::npos;
}

std::vector<Span> Tokens(std::string_view text) {
    std::vector<Span> tokens;
    for (std::size_t at = 0; at < text.size();) {
        if (IsBlank(text[at])) {
            ++at;
            continue;
        }
        const std::size_t first = at;
        while (at < text.size() && !IsBlank(text[at]))
            ++at;
        tokens.push_back({first, at});
    }
    return tokens;
}

std::vector<Span> Lines(std::string_view text) {
    std::vector<Span> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t feed = std::min(text.find('\n', at), text.size() - 1);
        lines.push_back({at, feed + 1});
        at = feed + 1;
    }
    return lines;
}

// Returns whether the token begins a section, which ends at the next such token.
bool IsHead(std::string_view token, Grammar grammar) {
    if (grammar == Grammar::Bvh) return token == "HIERARCHY" || token == "MOTION";
    return token[0] == ':';
}
// Tokens that open and close a block.
bool Opens(std::string_view token, Grammar grammar) {
    return token == (grammar == Grammar::Bvh ? "{" : "begin");
}
bool Closes(std::string_view token, Grammar grammar) {
    return token == (grammar == Grammar::Bvh ? "}" : "end");
}

std::vector<Span> Sections(std::string_view text, Grammar grammar) {
    const std::vector<Span> tokens = Tokens(text);
    std::vector<Span> sections;
    std::vector<std::size_t> open;
    std::size_t head = text.size();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const std::string_view token =
            text.substr(tokens[i].first, tokens[i].last - tokens[i].first);
        if (IsHead(token, grammar)) {
            if (head < tokens[i].first) sections.push_back({head, tokens[i].first});
            head = tokens[i].first;
        }
        // In BVH the two words before the brace, a keyword and a name, belong to the block.
        if (Opens(token, grammar))
            open.push_back(grammar == Grammar::Bvh ? i - std::min<std::size_t>(i, 2) : i);
        if (Closes(token, grammar) && !open.empty()) {
            sections.push_back({tokens[open.back()].first, tokens[i].last});
            open.pop_back();
        }
        // A frame of an AMC file begins with a line that has only a number.
        const bool ownLine = (tokens[i].first == 0 || text[tokens[i].first - 1] == '\n') &&
                             (tokens[i].last == text.size() || text[tokens[i].last] == '\n');
        if (grammar == Grammar::Acclaim && ownLine && IsNumber(token)) {
            if (head < tokens[i].first) sections.push_back({head, tokens[i].first});
            head = tokens[i].first;
        }
    }
    if (head < text.size()) sections.push_back({head, text.size()});
    return sections;
}

class Mutator {
  public:
    Mutator(std::string_view text, std::string_view donor, Grammar grammar, std::uint32_t seed)
        : text_(text), donor_(donor), grammar_(grammar), random_(seed) {}

    std::string Run(std::size_t capacity) {
        for (std::size_t changes = 1 + Below(4); changes > 0; --changes) {
            const std::string before = text_;
            Change();
            if (text_.size() > capacity) text_ = before;
        }
        text_.resize(std::min(text_.size(), capacity));
        return text_;
    }

  private:
    // The standard distributions are not used, because they differ between libraries.
    std::size_t Below(std::size_t n) { return n == 0 ? 0 : random_() % n; }

    template <std::size_t kCount>
    const char* OneOf(const char* const (&words)[kCount]) {
        return words[Below(kCount)];
    }
    const char* Keyword() {
        return grammar_ == Grammar::Bvh ? OneOf(kBvhWords) : OneOf(kAcclaimWords);
    }

    std::vector<Span> Units(std::string_view text) {
        switch (Below(3)) {
            case 0:
                return Sections(text, grammar_);
            case 1:
                return Lines(text);
            default:
                return Tokens(text);
        }
    }

    void Change() {
        switch (Below(8)) {
            case 0:
                return Swap();
            case 1:
                return Repeat();
            case 2:
                return Drop();
            case 3:
                return Splice();
            case 4:
            case 5:
                return ReplaceNumber();
            case 6:
                return ReplaceWord();
            default:
                return CopyToken();
        }
    }

    void Swap() {
        const std::vector<Span> units = Units(text_);
        if (units.size() < 2) return;
        Span a = units[Below(units.size())];
        Span b = units[Below(units.size())];
        if (b.first < a.first) std::swap(a, b);
        if (a.last > b.first) return;  // they overlap
        text_ = text_.substr(0, a.first) + TextOf(b) + text_.substr(a.last, b.first - a.last) +
                TextOf(a) + text_.substr(b.last);
    }

    void Repeat() {
        const std::vector<Span> units = Units(text_);
        if (units.empty()) return;
        const Span unit = units[Below(units.size())];
        const std::string copy = ' ' + TextOf(unit);
        std::string copies;
        for (std::size_t count = Below(10) == 0 ? 50 : 1 + Below(3); count > 0; --count)
            copies += copy;
        text_.insert(unit.last, copies);
    }

    void Drop() {
        const std::vector<Span> units = Units(text_);
        if (units.empty()) return;
        const Span unit = units[Below(units.size())];
        text_.erase(unit.first, unit.last - unit.first);
    }

    void Splice() {
        const std::vector<Span> given = Units(donor_);
        const std::vector<Span> tokens = Tokens(text_);
        if (given.empty()) return;
        const Span unit = given[Below(given.size())];
        const std::size_t target = tokens.empty() ? 0 : tokens[Below(tokens.size())].first;
        text_.insert(target, donor_.substr(unit.first, unit.last - unit.first) + ' ');
    }

    void ReplaceNumber() {
        std::vector<Span> numbers = Tokens(text_);
        std::erase_if(numbers, [this](const Span& span) { return !IsNumber(TextOf(span)); });
        if (numbers.empty()) return;
        Replace(numbers[Below(numbers.size())], OneOf(kNumbers));
    }

    void ReplaceWord() {
        const std::vector<Span> tokens = Tokens(text_);
        if (!tokens.empty()) Replace(tokens[Below(tokens.size())], Keyword());
    }

    void CopyToken() {
        const std::vector<Span> tokens = Tokens(text_);
        if (tokens.empty()) return;
        Replace(tokens[Below(tokens.size())], TextOf(tokens[Below(tokens.size())]));
    }

    std::string TextOf(const Span& span) const {
        return text_.substr(span.first, span.last - span.first);
    }
    void Replace(const Span& span, const std::string& with) {
        text_.replace(span.first, span.last - span.first, with);
    }

    std::string text_;
    const std::string donor_;
    const Grammar grammar_;
    std::mt19937 random_;
};

}  // namespace

std::string Mutate(std::string_view text, std::string_view donor, Grammar grammar,
                   std::uint32_t seed, std::size_t capacity) {
    return Mutator(text, donor, grammar, seed).Run(capacity);
}

}  // namespace fuzz
