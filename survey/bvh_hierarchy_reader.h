// Reads the hierarchy of a BVH section with the deviations that occur in files. Line breaks only
// matter for names, and braces may touch other words.
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
    // of the text. Returns false if the section is refused; it then holds what was read before.
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
    std::uint32_t current_ = kNoParent;
    bool afterNumber_ = false;  // the first of the words that touch each other is a number
};

// What messages call a joint: its name, or "the end site of" its parent.
std::string JointLabel(const BvhSection& section, const BvhJoint& joint);

}  // namespace survey
