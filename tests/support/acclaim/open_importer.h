// The Acclaim importer with its nodes in the open, fed with texts, and what it made, as text.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "acclaim/acclaim_import.h"
#include "headless/scene.h"
#include "tests/support/temp_dir.h"

namespace support {

struct Outcome {
    std::int32_t status = 0;
    std::string message;     // empty where none was recorded
    std::uint32_t line = 0;  // as printed, from 1; 0 where no file was being parsed
    bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out);

struct TestCurve {
    std::vector<double> times;
    std::vector<double> values;
    bool operator==(const TestCurve&) const = default;
};

class OpenImporter : public CAcclaimImport {
  public:
    // The import of a file with that text, as the command would run it, as model "skel" and as
    // motion "motion".
    Outcome Skeleton(const std::string& asf);
    Outcome Motion(const std::string& amc);
    // The parser alone, from behind the version line.
    Outcome Parse(const std::string& asf);
    // The parser alone, from behind the header, for the skeleton that is there; then the keys that
    // a node's slot got, none without a motion.
    Outcome ParseMotion(const std::string& amc);
    TestCurve Keys(const std::string& node, std::size_t slot);
    std::uint32_t FrameCount() const { return frameCount; }

    Outcome Report(std::int32_t status) const;
    const std::vector<std::unique_ptr<MOCAPMODEL>>& Nodes() const { return models; }
    // The first node of that name; fails the test without one.
    const MOCAPMODEL& Node(const std::string& name);
    using CAcclaimImport::FindModelByName;
    std::uint32_t ChannelCount() const { return channelCount; }

  private:
    std::string File(const std::string& name, const std::string& text) const;

    TempDir dir_;
};

// The scene's model of that name; fails the test without one.
const headless::Object& ModelNamed(const std::string& name);
const headless::Object& ObjectNamed(const std::string& name);
// The action of that name of the model "skel".
const headless::ActionSource& ActionNamed(const std::string& name);

// The curves of an action by target.
std::map<std::string, TestCurve> MotionCurves(const std::string& motion = "motion");

// A skeleton with something of everything and a motion of three frames for it: bones that turn
// about one axis and about three in another order, an animated length, a bone that is too short to
// be one, limits.
extern const char kSampleAsf[];
extern const char kSampleAmc[];

}  // namespace support
