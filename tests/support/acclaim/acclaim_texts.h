// Imports Acclaim texts, and returns what was imported as values that tests can compare.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "headless/scene.h"

namespace support {

struct Outcome {
    std::int32_t status = 0;
    std::string message;     // empty if none was recorded
    std::uint32_t line = 0;  // as printed, counted from 1; 0 if no file was being parsed
    bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out);

struct TestCurve {
    std::vector<double> times;
    std::vector<double> values;
    bool operator==(const TestCurve&) const = default;
};

// Imports a file with that text, as the command does, as model "skel" or as motion "motion".
Outcome ImportSkeleton(CAcclaimImport& importer, const std::string& asf);
Outcome ImportMotion(CAcclaimImport& importer, const std::string& amc);
// What the importer recorded, with the status that it returned.
Outcome Report(const CAcclaimImport& importer, std::int32_t status);
// The column of the recorded error, counted from 0.
std::uint32_t ColumnOf(const CAcclaimImport& importer);
// The first node of that name; throws when there is none.
const MOCAPMODEL& NodeOf(CAcclaimImport& importer, const std::string& name);

// The scene's model of that name; throws when there is none.
const headless::Object& ModelNamed(const std::string& name);
const headless::Object& ObjectNamed(const std::string& name);
// The action of that name of the model "skel".
const headless::ActionSource& ActionNamed(const std::string& name);

// The curves of an action by target.
std::map<std::string, TestCurve> MotionCurves(const std::string& motion = "motion");

// A skeleton with a bit of everything and a motion of three frames for it: bones that rotate about
// two or three axes in several orders, an animated length, a very short bone, limits.
extern const char kSampleAsf[];
extern const char kSampleAmc[];

}  // namespace support
