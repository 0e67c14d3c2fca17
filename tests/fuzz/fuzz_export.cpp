#include "tests/fuzz/export_check.h"
#include "tests/fuzz/target.h"

const fuzz::Target fuzz::kTarget = {
    CheckExports, 2, [](std::string_view input) {
        return input.size() > 2 && input[2] == ':' ? Grammar::Acclaim : Grammar::Bvh;
    }};
