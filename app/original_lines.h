// The lines of the files themselves in log lines about the texts in their stead.
#pragma once

#include <cstddef>

#include "app/import_survey.h"
#include "headless/session.h"

namespace app {

class OriginalLines {
  public:
    // `survey` stays as long as this.
    explicit OriginalLines(const ImportSurvey& survey) : survey_(survey) {}

    // A log line as it would be of the file itself. To be called with each in order: those that
    // come after the skeleton's documentation are about the motion.
    headless::LogLine Restore(const headless::LogLine& line);

  private:
    const ImportSurvey& survey_;
    bool skeletonDone_ = false;
};

// The line of the file that line `mended` of the text is from, both from 1.
std::size_t OriginalLine(const std::vector<survey::LineMark>& marks, std::size_t mended);

}  // namespace app
