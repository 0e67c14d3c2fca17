#include "tests/fuzz/acclaim_check.h"
#include "tests/fuzz/target.h"

const fuzz::Target fuzz::kTarget = {CheckAcclaim, 2,
                                    [](std::string_view) { return Grammar::Acclaim; }};
