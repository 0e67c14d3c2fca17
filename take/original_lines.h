// The lines of the files themselves in log lines about the texts in their stead.
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
    // The marks of the texts that the plug-in reads; null where it reads the file itself, or where
    // there is no motion. What they point to has to outlive this.
    OriginalLines(const LineMarks* file, const LineMarks* motion, bool hasMotion)
        : file_(file), motion_(motion), hasMotion_(hasMotion) {}

    // A log line as it would be of the file itself. To be called with each in order.
    headless::LogLine Restore(const headless::LogLine& line);

  private:
    const LineMarks* file_;
    const LineMarks* motion_;
    bool hasMotion_;
    LogSubject subject_;
};

// The line of the file that line `mended` of the text is from, both from 1.
std::size_t OriginalLine(const LineMarks& marks, std::size_t mended);

}  // namespace take
