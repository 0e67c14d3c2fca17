#include "tests/fuzz/acclaim_check.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "headless/session.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scene_requirements.h"
#include "tests/support/core/session_text.h"

namespace fuzz {
namespace {

constexpr std::size_t kLongestInput = 6000;
constexpr char kSeparator = '~';

struct Choices {
    bool nulls, chainFromParent, effectorToLastBone, group, interactive;
    bool limits;
    std::optional<double> length;

    Choices(char first, char second)
        : nulls((first & 1) != 0),
          chainFromParent((first & 2) != 0),
          effectorToLastBone((first & 4) != 0),
          group((first & 8) != 0),
          interactive((first & 16) != 0),
          limits((second & 8) != 0) {
        static constexpr double kLengths[] = {
            1.0, 0.056444, 2.5, 0.0, -1.0, 1e300, std::numeric_limits<double>::quiet_NaN()};
        const int length_choice = second & 7;
        if (length_choice > 0) length = kLengths[length_choice - 1];
    }
};

// The importer with its nodes in the open.
class Importer : public CAcclaimImport {
  public:
    Importer(const Choices& choices, bool nulls) {
        SetOptions(nulls, choices.chainFromParent, choices.effectorToLastBone, choices.group);
        ApplyLimits(choices.limits);
        if (choices.length) OverrideLengthMultiplier(true, *choices.length);
    }

    std::int32_t Import(const MemoryFile& asf, const std::optional<MemoryFile>& amc) {
        std::int32_t status = ImportSkeleton(asf.Path().c_str(), L"probe").GetCode();
        if (status == 0 && amc) status = ImportMotion(amc->Path().c_str(), L"motion").GetCode();
        return status;
    }

    std::string Message() const { return support::Utf8(GetLastError(nullptr, nullptr)); }

    support::ProbedSection Section() const {
        support::ProbedSection section;
        section.model = lastModel.GetRef().Object();
        for (const auto& node : models) {
            section.joints.push_back(ObjectOf(*node));
            support::WalkJoint joint;
            joint.offset = {node->offset[0], node->offset[1], node->offset[2]};
            section.parsed.joints.push_back(joint);
        }
        return section;
    }

    std::vector<int> Parents() const {
        std::unordered_map<const MOCAPMODEL*, int> places;
        for (const auto& node : models)
            places.emplace(node.get(), static_cast<int>(places.size()));
        std::vector<int> parents;
        for (const auto& node : models)
            parents.push_back(node->parent == nullptr ? -1 : places.at(node->parent));
        return parents;
    }

    // Whether the skeleton is a tree that is listed from the top down, where each bone lies at its
    // parent's end, and without animated lengths: what else a file may say, each kind of skeleton
    // makes something of its own of.
    bool IsPlainTree() const {
        const std::vector<int> parents = Parents();
        std::vector<std::uint32_t> children(models.size());
        for (std::size_t i = 0; i < models.size(); ++i) {
            const MOCAPMODEL& node = *models[i];
            for (const auto& channel : node.channels)
                if (channel.type == kBoneLength) return false;
            if (parents[i] < 0) continue;
            if (parents[i] >= static_cast<int>(i)) return false;
            ++children[static_cast<std::size_t>(parents[i])];
            for (int axis = 0; axis < 3; ++axis)
                if (node.globalPosition[axis] !=
                    node.parent->globalPosition[axis] + node.offset[axis])
                    return false;
            if (!node.isDetached && !HasOffset(node)) return false;
        }
        for (std::size_t i = 0; i < models.size(); ++i)
            if (children[i] != models[i]->childCount) return false;
        return true;
    }

  private:
    static bool HasOffset(const MOCAPMODEL& node) {
        return node.offset[0] != 0.0 || node.offset[1] != 0.0 || node.offset[2] != 0.0;
    }
    static std::uint32_t ObjectOf(const MOCAPMODEL& node) {
        if (node.nullObject.IsValid()) return node.nullObject.GetRef().Object();
        if (node.bone.IsValid()) return node.bone.GetRef().Object();
        if (node.parent == nullptr || !node.parent->bone.IsValid()) return 0;
        return node.parent->bone.GetEffector().GetRef().Object();
    }
};

void CheckImport(const MemoryFile& asf, const std::optional<MemoryFile>& amc,
                 const Choices& choices) {
    support::StartSession(choices.interactive);
    Importer importer(choices, choices.nulls);
    const std::int32_t status = importer.Import(asf, amc);
    RequireKnownStatus(status, importer.Message());
    RequireSoundScene(status == 0, true);
    // A second motion finds the skeleton as the first one found it.
    if (status != 0 || !amc) return;
    const std::int32_t again = importer.ImportMotion(amc->Path().c_str(), L"again").GetCode();
    Require(again == 0, "a motion that was imported once is refused: " + importer.Message());
    RequireSoundScene(true, true);
}

void CheckBothSkeletons(const MemoryFile& asf, const std::optional<MemoryFile>& amc,
                        const Choices& choices) {
    support::StartSession(false);
    Importer asNulls(choices, true);
    if (asNulls.Import(asf, amc) != 0 || !asNulls.IsPlainTree()) return;
    const support::ProbedSection nullsSection = asNulls.Section();
    const Places nulls = PlacesOf(nullsSection);

    support::StartSession(false);
    Importer asBones(choices, false);
    if (asBones.Import(asf, amc) != 0) return;
    support::ProbedSection bonesSection = asBones.Section();
    bonesSection.parsed = nullsSection.parsed;
    const std::vector<int> parents = asNulls.Parents();
    std::vector<std::string> setApart;
    for (std::size_t joint = 0; joint < parents.size(); ++joint) {
        const int parent = parents[joint];
        if (parent >= 0 && !setApart[static_cast<std::size_t>(parent)].empty())
            setApart.push_back(setApart[static_cast<std::size_t>(parent)]);
        else
            setApart.emplace_back(bonesSection.joints[joint] == 0 ? "no object" : "");
    }
    RequireSamePlaces(parents, setApart, nulls, PlacesOf(bonesSection));
}

}  // namespace

void CheckAcclaim(std::string_view input) {
    if (input.size() < 2 || input.size() > kLongestInput) return;
    const Choices choices(input[0], input[1]);
    const std::string_view texts = input.substr(2);
    const std::size_t separator = texts.find(kSeparator);
    const MemoryFile asf(texts.substr(0, separator));
    std::optional<MemoryFile> amc;
    if (separator != std::string_view::npos) amc.emplace(texts.substr(separator + 1));
    CheckImport(asf, amc, choices);
    CheckBothSkeletons(asf, amc, choices);
    headless::Session::Current().Reset();
}

}  // namespace fuzz
