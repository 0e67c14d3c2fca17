// Reads the values of an ASF file's keywords. If a value is wrong, the functions report an error,
// skip the rest of the line and return false.
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

    // Reads as many numbers as `numbers` has elements. Fails if more or fewer numbers follow the
    // keyword. `what` is the name of the numbers in messages.
    bool ReadNumbers(const AsfWord& keyword, const std::string& what, std::span<AsfNumber> numbers);
    // Reads all limits that follow. They may be infinite. Fails if their count is odd, or if a word
    // that is not a number follows on the same line.
    bool ReadLimits(const AsfWord& keyword, std::vector<AsfNumber>& limits);
    // Reads a word such as "zyx". `order` receives its letters as capitals.
    bool ReadAxisOrder(const AsfWord& keyword, std::array<char, 3>& order);
    // Reads the dofs on the rest of the line and appends them to those of the bone. Only the first
    // two characters of a word count. Fails if the root has a length.
    bool ReadDofs(const AsfWord& keyword, bool isRoot, AsfBone& bone);
    // Reads a name and returns it as UTF-8; empty if no word follows on the line.
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

// Whether the word has exactly two characters and is a dof of a bone.
bool IsDofWord(std::string_view word);

}  // namespace survey
