#include "survey/asf_sections.h"

#include <algorithm>
#include <iterator>

#include "survey/codes.h"
#include "survey/number_word.h"

namespace survey {
namespace {

constexpr std::string_view kSections[] = {":version", ":name",     ":units",    ":documentation",
                                          ":root",    ":bonedata", ":hierarchy"};

void AddUnitsText(AsfContext& context, const AsfWord& word, const std::string& message) {
    context.findings.Add({codes::kUnitsText, Severity::Note, word.text.data(), message, "", true});
}

bool InSection(const AsfWords& words) {
    return !words.Peek().IsEnd() && !words.Peek().IsKeyword();
}

// Reads the number after "length" or "mass" in :units. A length must be above 0; a mass may be any
// number. Otherwise reports what was found and returns 1.
AsfNumber ReadUnit(AsfContext& context, const AsfWord& keyword) {
    const AsfWord word = context.words.Peek();
    double value = 0.0;
    const bool isThere = !word.IsEnd() && !word.IsKeyword();
    const bool isNumber = isThere && ClassifyWord(word.text, value) == WordKind::Number;
    const bool isMeant = isNumber && (value > 0.0 || keyword.Is("mass"));
    if (isNumber || (isThere && !word.startsLine)) context.words.Next();
    if (isMeant) return {value, word.text};
    AddUnitsText(context, keyword,
                 (isThere ? "\"" + std::string(word.text) + "\"" : std::string("nothing")) +
                     " is given for " + std::string(keyword.text) +
                     " where a positive number is expected; it is read as 1");
    return {1.0, "1.0"};
}

void ReadAngleUnit(AsfContext& context) {
    const AsfWord word = context.words.Peek();
    const std::string lower = ToLowerText(word.text);
    if (lower.starts_with("deg") || lower.starts_with("rad")) {
        context.skeleton.degrees = lower.starts_with("deg");
        context.words.Next();
        return;
    }
    AddUnitsText(context, word,
                 "\"" + std::string(word.text) +
                     "\" is no unit of angles; deg or rad is expected, and deg is read");
    context.skeleton.degrees = true;
    if (!word.startsLine) context.words.SkipLine();
}

}  // namespace

bool IsAsfSection(const AsfWord& word) {
    return std::any_of(std::begin(kSections), std::end(kSections),
                       [&](std::string_view section) { return word.Is(section); });
}

void SkipUnknown(AsfContext& context, const AsfWord& word, bool mended) {
    if (!context.findings.AddAgain(codes::kKeywordUnknown, Severity::Note) || mended) {
        Finding* known = context.findings.Find(codes::kKeywordUnknown);
        if (known)
            known->mended |= mended;
        else
            context.findings.Add({codes::kKeywordUnknown, Severity::Note, word.text.data(),
                                  "\"" + std::string(word.text) +
                                      "\" is not known in an ASF file; it is passed over",
                                  "", mended});
    }
    context.words.SkipLine();
}

void ReadAsfUnits(AsfContext& context) {
    AsfSkeleton& skeleton = context.skeleton;
    while (InSection(context.words)) {
        const AsfWord word = context.words.Next();
        if (word.Is("mass")) {
            skeleton.mass = ReadUnit(context, word).text;
        } else if (word.Is("length")) {
            skeleton.lengthAt = word.text.data();
            skeleton.length = ReadUnit(context, word);
        } else if (word.Is("angle")) {
            ReadAngleUnit(context);
        } else {
            SkipUnknown(context, word, true);
        }
    }
}

void ReadAsfRoot(AsfContext& context) {
    AsfValues values(context.words, context.findings);
    AsfBone& root = context.skeleton.bones[0];
    while (InSection(context.words)) {
        const AsfWord word = context.words.Next();
        if (word.Is("order")) {
            root.dof.clear();
            root.dofAt = word.text.data();
            values.ReadDofs(word, true, root);
        } else if (word.Is("axis")) {
            root.axisAt = word.text.data();
            values.ReadAxisOrder(word, root.axisOrder);
        } else if (word.Is("position")) {
            values.ReadNumbers(word, "the root's position", context.skeleton.position);
        } else if (word.Is("orientation")) {
            values.ReadNumbers(word, "the root's orientation", root.axis);
        } else {
            SkipUnknown(context, word, true);
        }
    }
}

}  // namespace survey
