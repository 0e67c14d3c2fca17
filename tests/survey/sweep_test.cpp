// Surveys small files with every allocation failing once, and cut off after every byte.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <vector>

#include "survey/survey.h"
#include "tests/support/files.h"
#include "tests/support/memory/new_operators.h"

namespace {

using survey::Purpose;

struct Sample {
    std::string name;
    std::string file;    // content of a .bvh or .asf
    std::string motion;  // content of an .amc; empty if there is none
};

void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.name;
}

// Every fourth file of the corpus without the large ones, so that a run takes seconds.
std::vector<Sample> Samples() {
    constexpr std::size_t kEvery = 4;
    constexpr std::size_t kLargest = 3000;
    const std::filesystem::path quirks = ZKMOCAP_QUIRKS_DIR;
    std::vector<std::filesystem::path> paths = support::FilesIn(quirks / "acclaim", ".asf");
    const auto bvh = support::FilesIn(quirks / "bvh", ".bvh");
    paths.insert(paths.end(), bvh.begin(), bvh.end());
    std::vector<Sample> samples;
    for (std::size_t index = 0; index < paths.size(); index += kEvery) {
        Sample sample{paths[index].stem().string(), support::ReadText(paths[index]), ""};
        const auto motion = std::filesystem::path(paths[index]).replace_extension(".amc");
        if (std::filesystem::exists(motion)) sample.motion = support::ReadText(motion);
        for (char& c : sample.name)
            if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
        sample.name += paths[index].extension() == ".asf" ? "_asf" : "";
        if (sample.file.size() + sample.motion.size() <= kLargest)
            samples.push_back(std::move(sample));
    }
    return samples;
}

// All findings and mended texts of a survey for `purpose`, in one text.
std::string Told(const Sample& sample, Purpose purpose) {
    survey::Options options;
    options.purpose = purpose;
    options.bones = true;
    std::string told;
    const auto tell = [&](const survey::FileSurvey& surveyed) {
        for (const survey::Finding& finding : surveyed.findings)
            told += std::string(finding.code) + ' ' + std::to_string(finding.line) + ' ' +
                    finding.message + '\n';
        if (surveyed.mended) told += surveyed.mended->Text();
    };
    if (!sample.name.ends_with("_asf")) {
        tell(survey::SurveyBvh(sample.file, options));
        return told;
    }
    const survey::AcclaimFile motion{sample.motion, "a.amc"};
    const auto surveyed = survey::SurveyAcclaim(
        {sample.file, "a.asf"}, {&motion, sample.motion.empty() ? 0U : 1U}, options);
    tell(surveyed.skeleton);
    for (const survey::AmcSurvey& moved : surveyed.motions)
        tell(moved);
    return told;
}

std::uint64_t allocationsLeft = 0;

bool FailsAtZero(const void*) {
    return allocationsLeft != 0 && --allocationsLeft == 0;
}

class SurveySweep : public testing::TestWithParam<Sample> {};

TEST_P(SurveySweep, OnlyLackOfMemoryIsThrown) {
    for (const Purpose purpose : {Purpose::Check, Purpose::Import, Purpose::Fix}) {
        const std::string undisturbed = Told(GetParam(), purpose);
        bool failed = true;
        for (std::uint64_t allocation = 1; failed && !HasFailure(); ++allocation) {
            failed = false;
            std::string told;
            allocationsLeft = allocation;
            support::failsAllocation = FailsAtZero;
            try {
                told = Told(GetParam(), purpose);
            } catch (const std::bad_alloc&) {
                failed = true;
            }
            support::failsAllocation = nullptr;
            if (failed) continue;
            EXPECT_EQ(told, undisturbed) << "allocation " << allocation;
        }
    }
}

TEST_P(SurveySweep, AFileMayEndAnywhere) {
    Sample cut = GetParam();
    for (std::size_t size = GetParam().file.size(); size-- > 0;) {
        cut.file.resize(size);
        Told(cut, Purpose::Check);
    }
    cut.file = GetParam().file;
    for (std::size_t size = GetParam().motion.size(); size-- > 0;) {
        cut.motion.resize(size);
        Told(cut, Purpose::Check);
    }
}

INSTANTIATE_TEST_SUITE_P(, SurveySweep, testing::ValuesIn(Samples()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
