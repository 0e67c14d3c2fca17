#include "survey/bvh_hierarchy_reader.h"

#include <utility>

#include "survey/codes.h"
#include "survey/quoted_word.h"
#include "survey/source_findings.h"

namespace survey {
namespace {

bool IsEndSiteWord(std::string_view word) {
    return EqualsWord(word, "End") || BeginsWithWord(word, "EndSite") ||
           BeginsWithWord(word, "End_Site") || BeginsWithWord(word, "End-Site");
}

bool IsJointWord(std::string_view word) {
    return EqualsWord(word, "ROOT") || EqualsWord(word, "JOINT");
}

bool IsHeaderWord(std::string_view word) {
    return BeginsWithWord(word, "Frames:") || EqualsWord(word, "Frames") ||
           EqualsWord(word, "Frame") || BeginsWithWord(word, "FrameTime");
}

// Counts the columns of white space before the word in its line. A tab goes to the next multiple of
// eight.
std::int64_t IndentationBefore(const char* word, const char* textStart) {
    const char* first = word;
    while (first > textStart && !IsLineEnd(first[-1]))
        --first;
    std::int64_t columns = 0;
    for (; first < word; ++first)
        columns = *first == '\t' ? (columns / 8 + 1) * 8 : columns + 1;
    return columns;
}

}  // namespace

std::string JointLabel(const BvhSection& section, const BvhJoint& joint) {
    if (!joint.isEndSite) return joint.name;
    if (joint.parent == kNoParent) return "the end site";
    return "the end site of " + section.joints[joint.parent].name;
}

bool BvhHierarchyReader::Read(BvhSection& section) {
    section_ = &section;
    current_ = kNoParent;
    Step step = Step::Continue;
    while (step == Step::Continue)
        step = ReadWord();
    if (step == Step::Refused) return false;
    for (const BvhJoint& joint : section.joints)
        FinishJoint(joint);
    return true;
}

BvhWord BvhHierarchyReader::Next() {
    const BvhWord word = words_.Next();
    const bool isBrace = word.text == "{" || word.text == "}";
    if (!word.glued) {
        afterNumber_ = !word.text.empty() &&
                       (word.text[0] == '-' || word.text[0] == '+' || word.text[0] == '.' ||
                        (word.text[0] >= '0' && word.text[0] <= '9'));
    } else if (afterNumber_ && word.text == "}") {
        if (section_->bracesAfterNumbers++ == 0) section_->firstBraceAfterNumber = word.Spot();
    } else {
        const char* const at = isBrace ? word.text.data() : word.text.data() - 1;
        if (!findings_.AddAgain(codes::kBraceGlued, Severity::Note))
            findings_.Add({codes::kBraceGlued, Severity::Note, at,
                           "a brace touches another word or brace; they are parted", "", true});
    }
    return word;
}

// hierarchy = { ( "ROOT" | "JOINT" ) name body | "End" "Site" body } ( "MOTION" | end of text )
// body      = "{" { offset | channels | hierarchy } "}"
BvhHierarchyReader::Step BvhHierarchyReader::ReadWord() {
    const BvhWord& ahead = words_.Peek();
    const bool inside = current_ != kNoParent;
    if (ahead.IsEnd() || (EqualsWord(ahead.text, "HIERARCHY") && !ahead.glued)) {
        if (section_->bracesOpen == 0) return Step::Done;
        Refuse(codes::kHierarchyCut, words_.Peek().IsEnd() ? words_.End() : ahead.text.data(),
               (ahead.IsEnd() ? "the text ends" : "another HIERARCHY begins") +
                   std::string(" where \"}\" of ") +
                   JointLabel(*section_, section_->joints[current_]) +
                   " was expected; complete the file");
        return Step::Refused;
    }
    if (EqualsWord(ahead.text, "MOTION")) return OpenMotion(true);
    if (IsHeaderAhead()) return OpenMotion(false);
    bool read = false;
    if (ahead.text == "}")
        read = CloseBrace();
    else if (IsJointWord(ahead.text))
        read = OpenJoint();
    else if (IsEndSiteWord(ahead.text))
        read = OpenEndSite();
    else if (inside && EqualsWord(ahead.text, "OFFSET"))
        read = ReadOffset();
    else if (inside && EqualsWord(ahead.text, "CHANNELS"))
        read = ReadChannels();
    else
        read =
            Refuse(codes::kHierarchyWord, ahead.text.data(),
                   Quoted(ahead.text) + " is no word of a hierarchy; " +
                       (inside ? "JOINT, End Site, OFFSET, CHANNELS or \"}\"" : "ROOT or MOTION") +
                       " was expected; correct or remove it");
    return read ? Step::Continue : Step::Refused;
}

bool BvhHierarchyReader::IsHeaderAhead() const {
    return IsHeaderWord(words_.Peek().text);
}

BvhHierarchyReader::Step BvhHierarchyReader::OpenMotion(bool hasKeyword) {
    BvhMotionHeader& motion = section_->motion;
    motion.present = true;
    motion.at = words_.Peek().Spot();
    if (hasKeyword) {
        Next();
        return Step::Done;
    }
    findings_.Add({codes::kMotionKeyword, Severity::Note, motion.at.at,
                   "MOTION is missing before " + Quoted(words_.Peek().text) + "; it is added", "",
                   true});
    return Step::Done;
}

bool BvhHierarchyReader::CloseBrace() {
    const BvhWord brace = Next();
    if (current_ == kNoParent)
        return Refuse(
            codes::kHierarchyCut, brace.text.data(),
            "a closing brace too many: no joint is open; remove it, or add the \"{\" that "
            "is missing before it");
    BvhJoint& joint = section_->joints[current_];
    joint.end = brace.Spot();
    current_ = joint.parent;
    --section_->bracesOpen;
    return true;
}

BvhJoint& BvhHierarchyReader::Append(bool isEndSite) {
    const BvhWord& keyword = words_.Peek();
    BvhJoint joint;
    joint.isEndSite = isEndSite;
    joint.isRoot = EqualsWord(keyword.text, "ROOT");
    joint.parent = current_;
    joint.keyword = keyword.Spot();
    if (keyword.beginsLine)
        joint.indentation =
            IndentationBefore(keyword.text.data(), findings_.Source().Text().data());
    if (current_ != kNoParent) section_->joints[current_].hasJoints = true;
    section_->joints.push_back(std::move(joint));
    return section_->joints.back();
}

bool BvhHierarchyReader::OpenJoint() {
    BvhJoint& joint = Append(false);
    Next();
    return ReadName(joint) && ReadBrace(joint);
}

bool BvhHierarchyReader::OpenEndSite() {
    BvhJoint& joint = Append(true);
    ReadEndSiteText();
    return ReadBrace(joint);
}

// Reads a joint's name, which is the rest of the line up to a brace. Each run of blanks in the name
// becomes one underscore.
bool BvhHierarchyReader::ReadName(BvhJoint& joint) {
    const BvhWord first = words_.Peek();
    if (first.IsEnd() || first.text == "{")
        return Refuse(codes::kNameMissing, joint.keyword.at,
                      "a joint has no name before its brace; write one after ROOT or JOINT");
    const std::string_view name = words_.RestOfLine();
    joint.name = NameAsUtf8(name, findings_);
    bool blanks = false;
    bool afterBlank = false;
    std::string joined;
    for (const char c : joint.name) {
        const bool blank = IsBlank(c) || c == '\0';
        if (!blank || !afterBlank) joined += blank ? '_' : c;
        blanks |= blank;
        afterBlank = blank;
    }
    if (!blanks) return true;
    joint.name = std::move(joined);
    if (!findings_.AddAgain(codes::kNameBlank, Severity::Note))
        findings_.Add({codes::kNameBlank, Severity::Note, name.data(),
                       "the name " + Quoted(name) + " has blanks; it becomes " + Quoted(joint.name),
                       joint.name, true});
    return true;
}

// Reads "End" "Site" or a variant of it, and any further words before the brace.
void BvhHierarchyReader::ReadEndSiteText() {
    const BvhWord first = Next();
    const bool apart = EqualsWord(first.text, "End");
    bool plain = false;
    if (apart && BeginsWithWord(words_.Peek().text, "Site"))
        plain = EqualsWord(Next().text, "Site");
    std::string_view rest;
    if (words_.Peek().text != "{" && words_.Peek().line == first.line) rest = words_.RestOfLine();
    if (plain && rest.empty()) return;
    if (findings_.AddAgain(codes::kEndSiteText, Severity::Note)) return;
    const char* const from = first.text.data();
    const char* to = rest.empty() ? from : rest.data() + rest.size();
    if (rest.empty())
        while (to < words_.End() && !IsLineEnd(*to) && *to != '{')
            ++to;
    while (to > from && IsWhite(to[-1]))
        --to;
    const std::string_view whole(from, static_cast<std::size_t>(to - from));
    findings_.Add({codes::kEndSiteText, Severity::Note, from,
                   Quoted(whole) + " is read as \"End Site\"", "", true});
}

bool BvhHierarchyReader::ReadBrace(const BvhJoint& joint) {
    const BvhWord& ahead = words_.Peek();
    if (ahead.IsEnd())
        return Refuse(codes::kHierarchyCut, words_.End(),
                      "the text ends where \"{\" of " + JointLabel(*section_, joint) +
                          " was expected; complete the file");
    if (ahead.text != "{")
        return Refuse(codes::kHierarchyWord, ahead.text.data(),
                      "\"{\" of " + JointLabel(*section_, joint) + " was expected before " +
                          Quoted(ahead.text) + "; add it");
    section_->joints.back().brace = Next().Spot();
    current_ = static_cast<std::uint32_t>(section_->joints.size() - 1);
    ++section_->bracesOpen;
    return true;
}

// Whether the next word, which may be the end of the text, ends a list of numbers or channels.
bool BvhHierarchyReader::IsBodyWord() const {
    const std::string_view word = words_.Peek().text;
    return word.empty() || word == "{" || word == "}" || IsJointWord(word) || IsEndSiteWord(word) ||
           EqualsWord(word, "OFFSET") || EqualsWord(word, "CHANNELS") ||
           EqualsWord(word, "MOTION") || EqualsWord(word, "HIERARCHY") || IsHeaderWord(word);
}

void BvhHierarchyReader::FinishJoint(const BvhJoint& joint) {
    const char* const at = joint.keyword.at;
    if (!joint.hasOffset && !findings_.AddAgain(codes::kOffsetMissing, Severity::Note))
        findings_.Add({codes::kOffsetMissing, Severity::Note, at,
                       JointLabel(*section_, joint) + " has no OFFSET; it is given 0 0 0",
                       joint.name, true});
    if (!joint.hasChannels && !joint.isEndSite &&
        !findings_.AddAgain(codes::kChannelsMissing, Severity::Note))
        findings_.Add({codes::kChannelsMissing, Severity::Note, at,
                       joint.name + " has no CHANNELS; it keeps its rest pose", joint.name});
}

bool BvhHierarchyReader::Refuse(std::string_view code, const char* at, std::string message) {
    const std::string joint =
        current_ == kNoParent ? std::string() : section_->joints[current_].name;
    findings_.Add({code, Severity::Error, at, std::move(message), joint});
    return false;
}

}  // namespace survey
