// Line numbers of mended texts, which the plug-in logs, turned into those of the user's files.
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
    // `file` and `motion` are the line marks of the mended texts; null where the plug-in reads the
    // file itself or where there is no motion. The marks have to outlive this object.
    OriginalLines(const LineMarks* file, const LineMarks* motion, bool hasMotion)
        : file_(file), motion_(motion), hasMotion_(hasMotion) {}

    // Returns the log line with the line number of the user's file. It has to be called with every
    // line of the log, in order.
    headless::LogLine Restore(const headless::LogLine& line);

  private:
    const LineMarks* file_;
    const LineMarks* motion_;
    bool hasMotion_;
    LogSubject subject_;
};

// Returns the line of the file that line `mended` of the mended text came from. Both count from 1.
std::size_t OriginalLine(const LineMarks& marks, std::size_t mended);

}  // namespace take
