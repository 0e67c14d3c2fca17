#include "tests/fuzz/survey_check.h"
#include "tests/fuzz/target.h"

const fuzz::Target fuzz::kTarget = {CheckAcclaimSurvey, 1,
                                    [](std::string_view) { return Grammar::Acclaim; }};
