// Reads the values of an ASF file's keywords. If a value is wrong, each function that reads values
// reports an error, skips the rest of the line and returns false. ReadName accepts every word.
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
    // keyword. `what` is what error messages call these numbers.
    bool ReadNumbers(const AsfWord& keyword, const std::string& what, std::span<AsfNumber> numbers);
    // Reads all limits that follow, also those on later lines. Stops before a line that begins with
    // a word that is not a number. The values "inf" and "-inf" are allowed. Fails if the number of
    // limits is odd, if a word that is not a number follows another word on its line, or if a word
    // is NaN or several numbers without a blank between them.
    bool ReadLimits(const AsfWord& keyword, std::vector<AsfNumber>& limits);
    // Reads a word such as "zyx". `order` receives its letters as capitals.
    bool ReadAxisOrder(const AsfWord& keyword, std::array<char, 3>& order);
    // Reads the dofs on the rest of the line and appends them to those of the bone. Only the first
    // two characters of a word count. If the first is "l" or "|", only this one counts: the dof is
    // the length. Fails if a word is not a dof, if the bone already has the dof, or if `isRoot` is
    // true and the dof is the length.
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

// Whether the word has exactly two characters and ReadDofs takes it for a dof, such as "rx". A
// longer word or a single "l" is not accepted here.
bool IsDofWord(std::string_view word);

}  // namespace survey
