#include "tests/fuzz/acclaim_check.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "headless/session.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scene_requirements.h"
#include "tests/support/acclaim/acclaim_probe.h"
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

void SetChoices(CAcclaimImport& importer, const Choices& choices, bool nulls) {
    importer.SetOptions(nulls, choices.chainFromParent, choices.effectorToLastBone, choices.group);
    importer.ApplyLimits(choices.limits);
    if (choices.length) importer.OverrideLengthMultiplier(true, *choices.length);
}

std::int32_t Import(CAcclaimImport& importer, const MemoryFile& asf,
                    const std::optional<MemoryFile>& amc) {
    std::int32_t status = importer.ImportSkeleton(asf.Path().c_str(), L"probe").GetCode();
    if (status == 0 && amc)
        status = importer.ImportMotion(amc->Path().c_str(), L"motion").GetCode();
    return status;
}

std::string MessageOf(const CAcclaimImport& importer) {
    return support::Utf8(importer.GetLastError(nullptr, nullptr));
}

using Nodes = std::vector<std::unique_ptr<MOCAPMODEL>>;

support::ProbedSection SectionOf(const CAcclaimImport& importer) {
    support::ProbedSection section = support::ProbeNodes(importer);
    for (const auto& node : importer.GetSkeleton().models) {
        support::WalkJoint joint;
        joint.offset = {node->offset[0], node->offset[1], node->offset[2]};
        section.parsed.joints.push_back(joint);
    }
    return section;
}

// The index of each node's parent; -1 for a root.
std::vector<int> ParentsOf(const Nodes& nodes) {
    std::unordered_map<const MOCAPMODEL*, int> indices;
    for (const auto& node : nodes)
        indices.emplace(node.get(), static_cast<int>(indices.size()));
    std::vector<int> parents;
    for (const auto& node : nodes)
        parents.push_back(node->parent == nullptr ? -1 : indices.at(node->parent));
    return parents;
}

bool HasOffset(const MOCAPMODEL& node) {
    return node.offset[0] != 0.0 || node.offset[1] != 0.0 || node.offset[2] != 0.0;
}

// Whether the skeleton is a tree whose parents are listed before their children, where each bone
// starts at its parent's end, and without animated lengths. Other skeletons may differ between
// nulls and bones.
bool IsPlainTree(const Nodes& nodes) {
    const std::vector<int> parents = ParentsOf(nodes);
    std::vector<std::uint32_t> children(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const MOCAPMODEL& node = *nodes[i];
        for (const auto& channel : node.channels)
            if (channel.type == kBoneLength) return false;
        if (parents[i] < 0) continue;
        if (parents[i] >= static_cast<int>(i)) return false;
        ++children[static_cast<std::size_t>(parents[i])];
        for (int axis = 0; axis < 3; ++axis)
            if (node.globalPosition[axis] != node.parent->globalPosition[axis] + node.offset[axis])
                return false;
        if (!node.isDetached && !HasOffset(node)) return false;
    }
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (children[i] != nodes[i]->childCount) return false;
    return true;
}

void CheckImport(const MemoryFile& asf, const std::optional<MemoryFile>& amc,
                 const Choices& choices) {
    support::StartSession(choices.interactive);
    CAcclaimImport importer;
    SetChoices(importer, choices, choices.nulls);
    const std::int32_t status = Import(importer, asf, amc);
    RequireKnownStatus(status, MessageOf(importer));
    RequireSoundScene(status == 0, true);
    // The same motion must be accepted a second time, because an import leaves the skeleton as it
    // was.
    if (status != 0 || !amc) return;
    const std::int32_t again = importer.ImportMotion(amc->Path().c_str(), L"again").GetCode();
    Require(again == 0, "a motion that was imported once is refused: " + MessageOf(importer));
    RequireSoundScene(true, true);
}

void CheckBothSkeletons(const MemoryFile& asf, const std::optional<MemoryFile>& amc,
                        const Choices& choices) {
    support::StartSession(false);
    CAcclaimImport asNulls;
    SetChoices(asNulls, choices, true);
    const Nodes& nodes = asNulls.GetSkeleton().models;
    if (Import(asNulls, asf, amc) != 0 || !IsPlainTree(nodes)) return;
    const support::ProbedSection nullsSection = SectionOf(asNulls);
    const JointPositions nulls = PositionsOf(nullsSection);

    support::StartSession(false);
    CAcclaimImport asBones;
    SetChoices(asBones, choices, false);
    if (Import(asBones, asf, amc) != 0) return;
    support::ProbedSection bonesSection = support::ProbeNodes(asBones);
    bonesSection.parsed = nullsSection.parsed;
    const std::vector<int> parents = ParentsOf(nodes);
    std::vector<std::string> setApart;
    for (std::size_t joint = 0; joint < parents.size(); ++joint) {
        const int parent = parents[joint];
        if (parent >= 0 && !setApart[static_cast<std::size_t>(parent)].empty())
            setApart.push_back(setApart[static_cast<std::size_t>(parent)]);
        else
            setApart.emplace_back(bonesSection.joints[joint] == 0 ? "no object" : "");
    }
    RequireSamePositions(parents, setApart, nulls, PositionsOf(bonesSection));
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
