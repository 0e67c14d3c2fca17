#include "tests/fuzz/bvh_check.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "bvh/biovision_import.h"
#include "headless/session.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scene_requirements.h"
#include "tests/support/core/session_text.h"

namespace fuzz {
namespace {

constexpr std::size_t kLongestFile = 4096;

struct BvhChoices {
    bool nulls, chainFromParent, effectorToLastBone, group, interactive;
    explicit BvhChoices(char bits)
        : nulls((bits & 1) != 0),
          chainFromParent((bits & 2) != 0),
          effectorToLastBone((bits & 4) != 0),
          group((bits & 8) != 0),
          interactive((bits & 16) != 0) {}
};

// The whole import, as the command runs it.
void CheckImport(const std::wstring& path, const BvhChoices& choices) {
    support::StartSession(choices.interactive);
    CBiovisionImport importer;
    importer.SetOptions(choices.nulls, choices.chainFromParent, choices.effectorToLastBone,
                        choices.group);
    const std::int32_t status = importer.ImportBVH(path.c_str(), L"probe").GetCode();
    const std::string message = support::Utf8(importer.GetLastError(nullptr, nullptr));
    RequireKnownStatus(status, message);
    RequireSoundScene(status == 0);
    const std::size_t made = headless::Session::Current().GetScene().Models().size();
    const std::size_t completed = importer.GetModelsCount();
    Require(completed <= made && made <= completed + 1, "models are lost or too many");
    Require(status != 0 || completed == made, "a success with a model that is not whole");
    Require(importer.GetLastModel().IsValid() || completed == 0, "no model to hand out");
}

void CheckSection(const support::ProbedSection& section, const JointPositions& nulls,
                  bool fromParent) {
    const auto predictions = support::PredictChains(section.parsed, fromParent);
    std::vector<int> parents;
    std::vector<std::string> setApart;
    for (std::size_t joint = 0; joint < predictions.size(); ++joint) {
        parents.push_back(section.parsed.joints[joint].parent);
        setApart.push_back(predictions[joint].setApart);
    }
    RequireSamePositions(parents, setApart, nulls, PositionsOf(section));
}

// Imports the file as nulls and as bones. The bones must fail exactly if the prediction says
// so; otherwise both must give the same positions.
void CheckBothSkeletons(const std::wstring& path, const BvhChoices& choices) {
    const auto asNulls = support::ImportBvhFile(path, {});
    if (asNulls.status != 0) return;
    std::vector<JointPositions> nulls;
    bool fails = false;
    for (const support::ProbedSection& section : asNulls.sections) {
        nulls.push_back(PositionsOf(section));
        fails = fails || support::PredictFailure(
                             section.parsed,
                             support::PredictChains(section.parsed, choices.chainFromParent));
    }
    const auto asBones =
        support::ImportBvhFile(path, {false, choices.chainFromParent, choices.effectorToLastBone});
    Require((asBones.status != 0) == fails,
            fails ? "bones should have failed" : "bones failed: " + asBones.error);
    for (std::size_t i = 0; i < asBones.sections.size(); ++i)
        CheckSection(asBones.sections[i], nulls[i], choices.chainFromParent);
}

}  // namespace

void CheckBvh(std::string_view input) {
    if (input.empty() || input.size() > kLongestFile) return;
    const BvhChoices choices(input[0]);
    const MemoryFile file(input.substr(1));
    CheckImport(file.Path(), choices);
    // The probe cannot read an empty file.
    if (input.size() > 1) CheckBothSkeletons(file.Path(), choices);
    headless::Session::Current().Reset();
}

}  // namespace fuzz
