#include "take/user_input_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::ordered_json;

TEST(UserInputJson, HoldsEveryFieldInOrder) {
    EXPECT_EQ(
        take::UserInputJson(USERINPUT()),
        R"({"strASFFile": "", "strAMCFile": "", "strBVHFile": "", "bAddClip": false, )"
        R"("bUseNulls": false, "bChainFromParentJoint": false, "bEffectorToLastBone": false, )"
        R"("bCreateGroup": false, "bApplyLimits": false, "bOverrideLength": false, )"
        R"("dLengthMultiplier": 0.0})");
}

TEST(UserInputJson, HoldsTheValues) {
    USERINPUT input;
    input.strBVHFile = L"/a/\x6B69.bvh";
    input.bAddClip = true;
    input.dLengthMultiplier = 0.1;
    const ordered_json read = ordered_json::parse(take::UserInputJson(input));
    EXPECT_EQ(read["strBVHFile"], "/a/\xE6\xAD\xA9.bvh");
    EXPECT_EQ(read["bAddClip"], true);
    EXPECT_EQ(read["dLengthMultiplier"], 0.1);
}

}  // namespace
