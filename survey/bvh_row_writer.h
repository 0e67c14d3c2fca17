// Writes the rows of a mended text as the plan of the section says.
#pragma once

#include <cstddef>
#include <cstdint>
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
    // `text` must outlive this object.
    BvhRowWriter(const BvhSection& section, const BvhPlan& plan, std::string_view text);

    // Writes the mended text of a row, with a line feed, after the first `size` characters of
    // `out`, and returns how many characters that makes. `out` becomes longer if it is too short.
    // `values` are the row's values. `angles` has three angles about x, y and z, in degrees, for
    // each of ReexpressedJoints(plan).
    std::size_t Write(const BvhRow& row, const double* values, const double* angles,
                      std::vector<char>& out, std::size_t size);

  private:
    void ReadWords(const BvhRow& row);
    char* WriteColumn(const BvhColumn& column, const BvhRow& row, const double* values, char* out);

    const char* textEnd_;
    std::vector<BvhColumn> columns_;
    std::size_t wordsNeeded_ = 0;  // number of words of a row up to the last one that is copied
    std::vector<std::string_view> words_;  // the file's words for the row that is being written
    // The three angles of the joint whose re-expressed angles are written next.
    const double* angles_ = nullptr;
};

}  // namespace survey
