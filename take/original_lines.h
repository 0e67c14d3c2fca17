// If the plug-in reads a mended text, it logs line numbers of that text. The functions here turn
// them into line numbers of the user's file.
#pragma once

#include <cstddef>
#include <vector>

#include "headless/session.h"
#include "survey/survey.h"
#include "take/outcome.h"

namespace take {

using LineMarks = std::vector<survey::LineMark>;

class OriginalLines {
  public:
    // `file` and `motion` are the line marks of the two mended texts. A pointer is null if that
    // text was not mended or does not exist. `hasMotion` says whether the import has a motion file.
    // The marks have to outlive this object.
    OriginalLines(const LineMarks* file, const LineMarks* motion, bool hasMotion)
        : file_(file), motion_(motion), hasMotion_(hasMotion) {}

    // Returns the log line with the line number of the user's file. Call it with every line of the
    // log, in order, because earlier lines tell which file a later line is about.
    headless::LogLine Restore(const headless::LogLine& line);

  private:
    const LineMarks* file_;
    const LineMarks* motion_;
    bool hasMotion_;
    LogSubject subject_;
};

// Line `mended` of the mended text comes from a line of the user's file. Returns the number of that
// line. Both numbers count from 1.
std::size_t OriginalLine(const LineMarks& marks, std::size_t mended);

}  // namespace take
