#include "tests/support/bvh_walk.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace support {
namespace {

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

class Reader {
  public:
    explicit Reader(const std::string& text) : stream_(text) {}

    bool Next(std::string& token) { return static_cast<bool>(stream_ >> token); }
    std::string Token() {
        std::string token;
        if (!Next(token)) throw std::runtime_error("unexpected end");
        return token;
    }
    double Number() { return std::strtod(Token().c_str(), nullptr); }

  private:
    std::istringstream stream_;
};

void ReadJointHead(Reader& reader, WalkFile& file, int parent, std::size_t& values,
                   const std::string& keyword) {
    WalkJoint joint;
    joint.parent = parent;
    joint.isEndSite = keyword == "end";
    joint.name = reader.Token();
    if (joint.isEndSite)
        joint.name =
            parent < 0 ? "End_Site" : file.joints[static_cast<std::size_t>(parent)].name + "_End";
    reader.Token();  // {
    reader.Token();  // OFFSET
    for (double& component : joint.offset)
        component = reader.Number();
    joint.firstValue = values;
    file.joints.push_back(joint);
}

// Returns whether another section follows.
bool ReadSection(Reader& reader, WalkFile& file) {
    std::vector<int> open;
    std::size_t values = 0;
    for (std::string token = Lower(reader.Token()); token != "motion";
         token = Lower(reader.Token())) {
        if (token == "}") {
            open.pop_back();
        } else if (token == "channels") {
            WalkJoint& joint = file.joints[static_cast<std::size_t>(open.back())];
            for (int count = std::atoi(reader.Token().c_str()); count > 0; --count)
                joint.channels.push_back(Lower(reader.Token()));
            values += joint.channels.size();
        } else {
            ReadJointHead(reader, file, open.empty() ? -1 : open.back(), values, token);
            open.push_back(static_cast<int>(file.joints.size()) - 1);
        }
    }
    reader.Token();  // Frames:
    const auto frames = static_cast<std::size_t>(std::atoi(reader.Token().c_str()));
    reader.Token();  // Frame
    reader.Token();  // Time:
    file.frameTime = reader.Number();
    file.frames.assign(frames, std::vector<double>(values));
    for (auto& frame : file.frames)
        for (double& value : frame)
            value = reader.Number();
    std::string token;
    return reader.Next(token) && Lower(token) == "hierarchy";
}

}  // namespace

bool WalkJoint::ListsRotationsInXyzOrder() const {
    std::string axes;
    for (const std::string& channel : channels)
        if (channel.substr(1) == "rotation") axes += channel[0];
    return axes.size() > 1 && std::is_sorted(axes.begin(), axes.end());
}

std::vector<Vec3> WalkFile::Positions(std::size_t frame, bool asScene) const {
    std::vector<Vec3> positions(joints.size());
    std::vector<Matrix3> turns(joints.size());
    for (std::size_t j = 0; j < joints.size(); ++j) {
        const WalkJoint& joint = joints[j];
        Vec3 translation = joint.offset;
        Matrix3 own = kIdentity3;
        for (std::size_t c = 0; c < joint.channels.size(); ++c) {
            const double value = frames[frame][joint.firstValue + c];
            const char axis = joint.channels[c][0];
            if (joint.channels[c].substr(1) == "position") {
                translation[static_cast<std::size_t>(axis - 'x')] = value;
            } else if (asScene && joint.ListsRotationsInXyzOrder()) {
                own = ColumnRotation(axis, Radians(value)) * own;
            } else {
                own = own * ColumnRotation(axis, Radians(value));
            }
        }
        if (joint.parent < 0) {
            positions[j] = translation;
            turns[j] = own;
            continue;
        }
        const auto p = static_cast<std::size_t>(joint.parent);
        positions[j] = Add(positions[p], turns[p] * translation);
        turns[j] = turns[p] * own;
    }
    return positions;
}

double WalkFile::Size() const {
    std::vector<double> reach(joints.size());
    double longest = 0.0;
    for (std::size_t j = 0; j < joints.size(); ++j) {
        const WalkJoint& joint = joints[j];
        const double own = Length(joint.offset);
        reach[j] = joint.parent < 0 ? 0.0 : reach[static_cast<std::size_t>(joint.parent)] + own;
        longest = std::max(longest, reach[j]);
    }
    return longest;
}

std::vector<WalkFile> ReadBvh(const std::string& text) {
    Reader reader(text);
    std::vector<WalkFile> sections;
    reader.Token();  // HIERARCHY
    do {
        sections.emplace_back();
    } while (ReadSection(reader, sections.back()));
    return sections;
}

}  // namespace support
