// Reads the values of an ASF file's keywords. Wrong values are reported as errors; then the
// functions return false and the rest of the line is skipped.
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

    // Fills `numbers`. Fails if there are more or fewer numbers. `what` names them in messages.
    bool ReadNumbers(const AsfWord& keyword, const std::string& what, std::span<AsfNumber> numbers);
    // Reads the limits that follow, which may be infinite. Fails if their count is odd, or if
    // another word follows on their line.
    bool ReadLimits(const AsfWord& keyword, std::vector<AsfNumber>& limits);
    // Reads a word such as "zyx"; `order` gets its letters as capitals.
    bool ReadAxisOrder(const AsfWord& keyword, std::array<char, 3>& order);
    // Appends the dofs on the rest of the line to those of the bone. Only the first two characters
    // of a word count. The root cannot have a length.
    bool ReadDofs(const AsfWord& keyword, bool isRoot, AsfBone& bone);
    // Reads a name as UTF-8; empty if the line holds none.
    std::string ReadName();

    // Reports an error at the word, skips the line, and returns false.
    bool Fail(const AsfWord& at, const std::string& message);

    // Sets the bone that errors are reported for. `name` must outlive this object.
    void SetBone(const std::string* name) { bone_ = name; }

  private:
    bool FailCount(const AsfWord& keyword, const std::string& what, std::size_t found,
                   std::size_t expected);

    AsfWords& words_;
    FindingList& findings_;
    const std::string* bone_ = nullptr;
};

// Whether the word, of two characters, is a dof of a bone.
bool IsDofWord(std::string_view word);

}  // namespace survey
