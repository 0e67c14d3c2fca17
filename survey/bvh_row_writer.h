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

class BvhRowWriter {
  public:
    BvhRowWriter(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
                 std::string_view text);

    // The frames in their order, each once. Appends its row without a line end.
    void Write(std::size_t frame, std::string& out);

  private:
    void ReadWords(const BvhRow& row);
    char* WriteColumn(const BvhColumn& column, const BvhRow& row, const double* values, char* out);

    const BvhSection& section_;
    const BvhFrames& frames_;
    const char* textEnd_;
    std::vector<BvhColumn> columns_;
    std::vector<TurnedAngles> turned_;
    std::vector<std::string_view> words_;
    std::size_t turn_ = 0;
    double angles_[3] = {};  // about x, y and z
};

}  // namespace survey
