#include "survey/asf_reader.h"

#include <algorithm>
#include <utility>

#include "survey/acclaim_words.h"
#include "survey/asf_sections.h"
#include "survey/codes.h"
#include "survey/encoding.h"
#include "survey/number_word.h"
#include "survey/text_kind.h"
#include "text/utf8.h"

namespace survey {
namespace {

// A version below this is replaced by the default version.
constexpr double kLowestVersion = 1.0;

// Replaces characters so that every reader takes the name for one word.
std::string OneWord(std::string name) {
    for (char& c : name)
        if (IsAsfSeparator(c) || c == ':' || c == '#' || c == '\0') c = '_';
    return name.empty() ? "skeleton" : name;
}

// Searches the lines after the one that holds `at` for the first that begins with a colon. Returns
// where the colon is, or `end` if there is no such line.
const char* FindSection(const char* at, const char* end) {
    while (at < end) {
        at = std::find_if(at, end, IsLineEnd);
        at = std::find_if_not(at, end, IsWhite);
        if (at < end && *at == ':') break;
    }
    return at;
}

// Whether `c` is white space here, but the plug-in takes it for a part of a word or for the end of
// the text.
bool IsOdd(char c) {
    return c == '\v' || c == '\f' || c == '\0';
}

// Returns the text as UTF-8. Lines end with line feeds, odd white space becomes spaces, and white
// space at the end is removed.
std::string CleanText(std::string_view text) {
    while (!text.empty() && IsWhite(text.back()))
        text.remove_suffix(1);
    std::string clean;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') continue;
        clean += text[at] == '\r' ? '\n' : IsOdd(text[at]) ? ' ' : text[at];
    }
    return text::IsValidUtf8(clean) ? clean : Windows1252ToUtf8(clean);
}

class Reader {
  public:
    Reader(FindingList& findings, std::string fileName)
        : text_(findings.Source().Text()),
          findings_(findings),
          fileName_(std::move(fileName)),
          words_(text_),
          context_{words_, findings, skeleton_} {}

    AsfSkeleton Read() {
        skeleton_.bones[0].name = "root";
        if (IsBinary(words_.Peek().text)) {
            Refuse("");
            return std::move(skeleton_);
        }
        while (!words_.Peek().IsEnd())
            ReadSection(words_.Next());
        if (!hasBones_ || hierarchies_.empty()) {
            Refuse(std::string("it has no ") + (hasBones_ ? ":hierarchy" : ":bonedata") +
                   " section; ");
            return std::move(skeleton_);
        }
        ReadAsfHierarchy(findings_, hierarchies_, hasRoot_, skeleton_);
        return std::move(skeleton_);
    }

  private:
    void ReadSection(const AsfWord& word) {
        if (word.Is(":version")) {
            ReadVersion();
        } else if (word.Is(":name")) {
            ReadName(word);
        } else if (word.Is(":units")) {
            ReadAsfUnits(context_);
        } else if (word.Is(":documentation")) {
            ReadDocumentation(word);
        } else if (word.Is(":root")) {
            hasRoot_ = true;
            skeleton_.bones[0].at = word.text.data();
            ReadAsfRoot(context_);
        } else if (word.Is(":bonedata")) {
            hasBones_ = true;
            ReadAsfBones(context_);
        } else if (word.Is(":hierarchy")) {
            hierarchies_.push_back(word.text.data() + word.text.size());
            words_.MoveTo(FindSection(word.text.data(), text_.data() + text_.size()), true);
        } else {
            SkipSection(word);
        }
    }

    void ReadVersion() {
        double value = 0.0;
        const AsfWord word = words_.Peek();
        if (word.IsKeyword() || word.IsEnd()) return;
        words_.Next();
        if (ClassifyWord(word.text, value) == WordKind::Number && value >= kLowestVersion)
            skeleton_.version = {value, word.text};
        else
            skeleton_.changed = true;
    }

    // Reads the skeleton's name, which is the rest of the line. Joins its words with "_".
    void ReadName(const AsfWord& keyword) {
        const AsfWord& next = words_.Peek();
        if (next.IsEnd() || next.startsLine || next.IsKeyword()) {
            skeleton_.name = OneWord(fileName_);
            findings_.Add({codes::kNameEmpty, Severity::Note, keyword.text.data(),
                           "no name is given; the file's is used", "", true});
            return;
        }
        AsfValues values(words_, findings_);
        skeleton_.name = OneWord(values.ReadName());
        bool hasBlank = false;
        for (; !next.IsEnd() && !next.startsLine && !next.IsKeyword(); hasBlank = true)
            skeleton_.name += "_" + OneWord(values.ReadName());
        if (hasBlank)
            findings_.Add({codes::kNameBlank, Severity::Note, keyword.text.data(),
                           "the name has blanks, which become \"_\"", "", true});
    }

    void ReadDocumentation(const AsfWord& keyword) {
        const char* const start = keyword.text.data() + keyword.text.size();
        const char* const end = FindSection(start, text_.data() + text_.size());
        const std::string_view raw(start, static_cast<std::size_t>(end - start));
        skeleton_.hasDocumentation = true;
        skeleton_.documentationAt = keyword.text.data();
        skeleton_.documentation = CleanText(raw);
        if (!text::IsValidUtf8(raw) && !findings_.Find(codes::kTextEncoding))
            findings_.Add({codes::kTextEncoding, Severity::Note, start + text::FindInvalidUtf8(raw),
                           "the documentation is not UTF-8 and was read as Windows-1252; "
                           "use --encoding if the file has another encoding",
                           "", true});
        const std::size_t colon = raw.find(':');
        if (colon != std::string_view::npos) {
            findings_.Add({codes::kDocumentationColon, Severity::Note, start + colon,
                           "a colon is part of the documentation, which the plug-in would end "
                           "here; it is left out",
                           "", true});
            std::replace(skeleton_.documentation.begin(), skeleton_.documentation.end(), ':', ' ');
        }
        words_.MoveTo(end, true);
    }

    // Skips an unknown section, or words outside of all sections. The plug-in skips only the
    // keyword of an unknown section. If the section has any content, it must be left out of the
    // mended text.
    void SkipSection(const AsfWord& word) {
        const bool isBare = word.IsKeyword() && words_.Peek().IsKeyword();
        if (isBare) {
            SkipUnknown(context_, word, false);
            return;
        }
        SkipUnknown(context_, word, true);
        while (!words_.Peek().IsEnd() && !words_.Peek().IsKeyword())
            words_.Next();
    }

    // Whether the word has control characters, so that the file is not a text.
    static bool IsBinary(std::string_view word) {
        return std::any_of(word.begin(), word.end(),
                           [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    }

    void Refuse(const std::string& missing) {
        const bool isCut = hasBones_ || hasRoot_;
        const std::string look = isCut ? "the file may be cut off"
                                       : "the file looks like " + std::string(DescribeText(text_));
        findings_.Add({codes::kNotAsf, Severity::Error, nullptr,
                       "this is no ASF skeleton: " + missing + look});
    }

    std::string_view text_;
    FindingList& findings_;
    std::string fileName_;
    AsfSkeleton skeleton_;
    AsfWords words_;
    AsfContext context_;
    std::vector<const char*> hierarchies_;
    bool hasRoot_ = false;
    bool hasBones_ = false;
};

}  // namespace

AsfSkeleton ReadAsf(FindingList& findings, const std::string& fileName) {
    return Reader(findings, fileName).Read();
}

}  // namespace survey
