// Writes the rows of a mended text as the plan of the section says.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/bvh_plan.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// A channel of a joint in the mended text.
struct BvhColumn {
    enum class Kind : std::uint8_t { AsWritten, Added, Constant, Reexpressed };
    Kind kind = Kind::AsWritten;
    BvhChannel channel = BvhChannel::PositionX;
    // For AsWritten and Added: the index of the value in the file's row. For Reexpressed: how many
    // re-expressed columns of the joint come before this one.
    std::size_t value = 0;
    // For Added: what is added to the value of the file. For Constant: the value to be written.
    double number = 0.0;
};

// The columns of a joint in the order of the mended text. There are at most kMostChannels.
std::vector<BvhColumn> PlannedColumns(const BvhSection& section, const BvhPlan& plan,
                                      std::size_t joint);

// The indexes of the joints whose rotations the plan re-expresses, in rising order.
std::vector<std::size_t> ReexpressedJoints(const BvhPlan& plan);

class BvhRowWriter {
  public:
    // `frames` and `text` must outlive this object.
    BvhRowWriter(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
                 std::string_view text);

    // Appends the row of the frame at this index, counted from 0, with a line feed. `angles` has
    // three angles about x, y and z, in degrees, for each of ReexpressedJoints(plan).
    void Write(std::size_t frame, const double* angles, std::string& out);

  private:
    void ReadWords(const BvhRow& row);
    char* WriteColumn(const BvhColumn& column, const BvhRow& row, const double* values, char* out);

    const BvhFrames& frames_;
    const char* textEnd_;
    std::vector<BvhColumn> columns_;
    std::size_t wordsNeeded_ = 0;  // number of words of a row up to the last one that is copied
    std::vector<std::string_view> words_;  // the file's words for the row that is being written
    std::vector<char> row_;                // buffer for the row that is being written
    // The three angles of the joint whose re-expressed angles are written next.
    const double* angles_ = nullptr;
};

}  // namespace survey
