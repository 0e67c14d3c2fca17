// The rows of a canonical text, as a section's plan wants them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/bvh_plan.h"
#include "survey/bvh_rotations.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// A channel of a joint as it is handed on.
struct BvhColumn {
    enum class Kind : std::uint8_t { AsWritten, Added, Constant, Turned };
    Kind kind = Kind::AsWritten;
    BvhChannel channel = BvhChannel::PositionX;
    std::size_t value = 0;  // in the file's row; Turned: 0, 1 or 2 within the joint
    double number = 0.0;    // Added: what is added; Constant: the value
};

// The channels of a joint, in their order; at most kMostChannels.
std::vector<BvhColumn> PlannedColumns(const BvhSection& section, const BvhPlan& plan,
                                      std::size_t joint);

// The joints that the plan turns, in the section's order.
std::vector<std::size_t> TurningJoints(const BvhPlan& plan);

class BvhRowWriter {
  public:
    // `turned` are the angles of the joints that the plan turns. All stay as long as this.
    BvhRowWriter(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
                 const TurnedFrames& turned, std::string_view text);

    // Appends the frame's row without a line end.
    void Write(std::size_t frame, std::string& out);

  private:
    void ReadWords(const BvhRow& row);
    char* WriteColumn(const BvhColumn& column, const BvhRow& row, const double* values, char* out);

    const BvhFrames& frames_;
    const char* textEnd_;
    std::vector<BvhColumn> columns_;
    const TurnedFrames& turned_;
    std::size_t wordsNeeded_ = 0;  // of a row, those that are copied and those before them
    std::vector<std::string_view> words_;
    std::vector<char> row_;
    const double* angles_ = nullptr;  // of the joints of the row that turn and are still to come
};

}  // namespace survey
