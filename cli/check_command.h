#pragma once

#include "cli/check_request.h"

namespace cli {

// Surveys the files and prints what is found and what they hold; with --fix writes their canonical
// texts. Returns the exit status.
int RunCheck(const CheckRequest& request);

}  // namespace cli
