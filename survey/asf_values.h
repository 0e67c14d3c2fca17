// The values of an ASF file's keywords. What is wrong with them is told; the keyword's line is then
// passed over.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "survey/acclaim_skeleton.h"
#include "survey/acclaim_words.h"
#include "survey/finding_list.h"

namespace survey {

class AsfValues {
  public:
    AsfValues(AsfWords& words, FindingList& findings) : words_(words), findings_(findings) {}

    // Exactly as many numbers as `numbers` holds. `what` names them in messages.
    bool ReadNumbers(const AsfWord& keyword, const std::string& what, std::span<AsfNumber> numbers);
    // The bounds that follow, infinite ones too, however many there are.
    bool ReadLimits(const AsfWord& keyword, std::vector<AsfNumber>& limits);
    // The letters of a word such as "zyx", as capitals.
    bool ReadAxisOrder(const AsfWord& keyword, std::array<char, 3>& order);
    // The rest of the line, of which two characters a word count, after what the bone has already.
    // A length is no degree of freedom of the root's.
    bool ReadDofs(const AsfWord& keyword, bool isRoot, AsfBone& bone);
    // A name in UTF-8; empty where the line holds none.
    std::string ReadName();

    bool Fail(const AsfWord& at, const std::string& message);

    // The bone that is being read, for messages.
    void SetBone(const std::string* name) { bone_ = name; }

  private:
    bool FailCount(const AsfWord& keyword, const std::string& what, std::size_t found,
                   std::size_t expected);

    AsfWords& words_;
    FindingList& findings_;
    const std::string* bone_ = nullptr;
};

// Whether the word is a degree of freedom of a bone.
bool IsDofWord(std::string_view word);

}  // namespace survey
