// Reads the hierarchy of a BVH section. Tolerates the deviations from the format that occur in
// files. Braces may touch other words. A line end separates words, as a blank does. It also ends a
// name, a comment, or the text after "End Site". A list of numbers or channels may go on over
// several lines. Once the list is complete, it ends before a line that begins with a word of
// another kind.
#pragma once

#include <cstddef>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/bvh_words.h"
#include "survey/finding_list.h"

namespace survey {

class BvhHierarchyReader {
  public:
    BvhHierarchyReader(BvhWords& words, FindingList& findings)
        : words_(words), findings_(findings) {}

    // Reads from the word after HIERARCHY up to the motion's header, the next HIERARCHY or the end
    // of the text. Returns false if the section is refused. In that case `section` holds what was
    // read before the error.
    bool Read(BvhSection& section);

  private:
    enum class Step { Continue, Done, Refused };
    Step ReadWord();
    Step OpenMotion(bool hasKeyword);
    bool CloseBrace();
    bool OpenJoint();
    bool OpenEndSite();
    bool ReadName(BvhJoint& joint);
    void ReadEndSiteText();
    bool ReadBrace(const BvhJoint& joint);
    bool ReadOffset();
    bool ReadOffsetWord(BvhJoint& joint, std::size_t& count, const BvhWord& word, bool& commas,
                        bool& points);
    bool ReadChannels();
    bool CountChannels(const BvhWord& count, std::size_t names);

    BvhWord Next();
    bool IsBodyWord() const;
    bool IsWordOfAnotherLine(std::uint32_t line) const;
    bool IsHeaderAhead() const;
    BvhJoint& Append(bool isEndSite);
    void FinishJoint(const BvhJoint& joint);
    bool Refuse(std::string_view code, const char* at, std::string message);

    BvhWords& words_;
    FindingList& findings_;
    BvhSection* section_ = nullptr;
    std::uint32_t current_ = kNoParent;  // index of the innermost joint whose brace is open
    // Words without white space between them form a run. This tells whether the first word of the
    // current run looks like a number.
    bool afterNumber_ = false;
};

// What messages call a joint: its name or, for an end site, "the end site of" and the parent's
// name.
std::string JointLabel(const BvhSection& section, const BvhJoint& joint);

}  // namespace survey
