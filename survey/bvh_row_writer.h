// Writes the rows of a mended text by a section's plan.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/bvh_plan.h"
#include "survey/bvh_rotations.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// A channel of a joint in the mended text.
struct BvhColumn {
    enum class Kind : std::uint8_t { AsWritten, Added, Constant, Reexpressed };
    Kind kind = Kind::AsWritten;
    BvhChannel channel = BvhChannel::PositionX;
    // AsWritten, Added: index of the value in the file's row. Reexpressed: how many re-expressed
    // columns of the joint come before this one.
    std::size_t value = 0;
    double number = 0.0;  // Added: what is added to the value. Constant: the value.
};

// The columns of a joint in the order of the mended text; at most kMostChannels.
std::vector<BvhColumn> PlannedColumns(const BvhSection& section, const BvhPlan& plan,
                                      std::size_t joint);

// The indexes of the joints whose rotations the plan re-expresses, rising.
std::vector<std::size_t> ReexpressedJoints(const BvhPlan& plan);

class BvhRowWriter {
  public:
    // `reexpressed` holds the angles of ReexpressedJoints(plan). `frames`, `reexpressed` and `text`
    // must outlive this object.
    BvhRowWriter(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
                 const ReexpressedFrames& reexpressed, std::string_view text);

    // Appends the frame's row without a line end.
    void Write(std::size_t frame, std::string& out);

  private:
    void ReadWords(const BvhRow& row);
    char* WriteColumn(const BvhColumn& column, const BvhRow& row, const double* values, char* out);

    const BvhFrames& frames_;
    const char* textEnd_;
    std::vector<BvhColumn> columns_;
    const ReexpressedFrames& reexpressed_;
    std::size_t wordsNeeded_ = 0;  // number of words of a row up to the last one that is copied
    std::vector<std::string_view> words_;
    std::vector<char> row_;           // buffer for the row that is being written
    const double* angles_ = nullptr;  // the three angles of the next joint that is re-expressed
};

}  // namespace survey
