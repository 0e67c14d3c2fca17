#include "take/user_input_json.h"

#include <string_view>

#include "headless/text.h"
#include "text/json_text.h"

namespace take {

std::string UserInputJson(const USERINPUT& input) {
    std::string text;
    const auto string = [&](const char* name, const Zelk::CString& value) {
        text += std::string("\"") + name + "\": ";
        text::AppendJsonString(text, headless::View(value));
        text += ", ";
    };
    const auto flag = [&](const char* name, bool value) {
        text += std::string("\"") + name + "\": " + (value ? "true" : "false") + ", ";
    };
    text += '{';
    string("strASFFile", input.strASFFile);
    string("strAMCFile", input.strAMCFile);
    string("strBVHFile", input.strBVHFile);
    flag("bAddClip", input.bAddClip);
    flag("bUseNulls", input.bUseNulls);
    flag("bChainFromParentJoint", input.bChainFromParentJoint);
    flag("bEffectorToLastBone", input.bEffectorToLastBone);
    flag("bCreateGroup", input.bCreateGroup);
    flag("bApplyLimits", input.bApplyLimits);
    flag("bOverrideLength", input.bOverrideLength);
    text += "\"dLengthMultiplier\": ";
    text::AppendJsonNumber(text, input.dLengthMultiplier);
    text += '}';
    return text;
}

}  // namespace take
