#include "tests/support/acclaim/acclaim_walk.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <unordered_map>

#include "tests/support/math.h"

namespace support {
namespace {

using Words = std::vector<std::string>;

constexpr double kShortest = 0.01;

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// The words of each line that has any; comments are gone.
std::vector<Words> Lines(const std::string& text) {
    std::vector<Words> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line.resize(std::min(line.find('#'), line.size()));
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '(' || c == ')' || c == ','; }, ' ');
        std::istringstream words(line);
        Words found;
        for (std::string word; words >> word;)
            found.push_back(word);
        if (!found.empty()) lines.push_back(found);
    }
    return lines;
}

double Number(const std::string& word) {
    return std::strtod(word.c_str(), nullptr);
}

Vec3 Vector(const Words& words, std::size_t first) {
    return {Number(words.at(first)), Number(words.at(first + 1)), Number(words.at(first + 2))};
}

Words ShortTokens(const Words& words) {
    Words tokens;
    for (std::size_t i = 1; i < words.size(); ++i)
        tokens.push_back(words[i][0] == '|' ? "|" : Lower(words[i].substr(0, 2)));
    return tokens;
}

class AsfReader {
  public:
    AsfReader(const std::string& text, const AcclaimReading& reading) : lines_(Lines(text)) {
        pair_.limited = reading.limited;
        pair_.factorIsGiven = reading.lengthFactor.has_value();
        pair_.lengthFactor = reading.lengthFactor.value_or(1.0);
    }

    AcclaimPair Read() {
        while (at_ < lines_.size()) {
            const std::string section = Lower(lines_[at_++][0]);
            if (section == ":root")
                Root();
            else if (section == ":bonedata")
                Bones();
            else if (section == ":hierarchy")
                Hierarchy();
            else
                SkipOrUnits(section == ":units");
        }
        return pair_;
    }

    std::unordered_map<std::string, std::size_t> Names() const { return names_; }

  private:
    bool InSection() const { return at_ < lines_.size() && lines_[at_][0][0] != ':'; }

    void SkipOrUnits(bool units) {
        for (; InSection(); ++at_) {
            const Words& words = lines_[at_];
            if (!units) continue;
            const std::string key = Lower(words[0]);
            if (key == "angle") pair_.degrees = Lower(words.at(1)) == "deg";
            if (key == "length" && !pair_.factorIsGiven) pair_.lengthFactor = Number(words.at(1));
        }
    }

    void Root() {
        AcclaimBone root;
        root.name = "root";
        root.isRoot = true;
        for (; InSection(); ++at_) {
            const Words& words = lines_[at_];
            const std::string key = Lower(words[0]);
            if (key == "order") root.dof = ShortTokens(words);
            if (key == "axis") root.axisOrder = Lower(words.at(1));
            if (key == "position") root.position = Vector(words, 1);
            if (key == "orientation") root.axis = Vector(words, 1);
        }
        root.limits.resize(root.dof.size());
        Add(root);
    }

    void Bones() {
        for (; InSection(); ++at_) {
            AcclaimBone bone;
            for (++at_; Lower(lines_[at_][0]) != "end"; ++at_)
                BoneLine(bone, lines_[at_]);
            bone.length *= pair_.lengthFactor;
            bone.limits.resize(bone.dof.size());
            Add(bone);
        }
    }

    void BoneLine(AcclaimBone& bone, const Words& words) {
        const std::string key = Lower(words[0]);
        if (key == "name") bone.name = Lower(words.at(1));
        if (key == "direction") bone.direction = Vector(words, 1);
        if (key == "length") bone.length = Number(words.at(1));
        if (key == "axis") {
            bone.axis = Vector(words, 1);
            bone.axisOrder = Lower(words.at(4));
        }
        if (key == "dof") bone.dof = ShortTokens(words);
        if (key == "limits") {
            Words bounds(words.begin() + 1, words.end());
            while (bounds.size() < 2 * bone.dof.size()) {
                ++at_;
                bounds.insert(bounds.end(), lines_[at_].begin(), lines_[at_].end());
            }
            for (std::size_t i = 0; i < bone.dof.size(); ++i)
                bone.limits.push_back({{Number(bounds[2 * i]), Number(bounds[2 * i + 1])}});
        }
    }

    void Hierarchy() {
        bool isFirst = true;
        for (++at_; Lower(lines_[at_][0]) != "end"; ++at_) {
            const Words& words = lines_[at_];
            if (isFirst) RenameRoot(Lower(words[0]));
            isFirst = false;
            const std::size_t parent = names_.at(Lower(words[0]));
            for (std::size_t i = 1; i < words.size(); ++i)
                Attach(parent, names_.at(Lower(words[i])));
        }
        ++at_;
        EndLeaves();
    }

    void Attach(std::size_t parent, std::size_t child) {
        if (pair_.bones[parent].firstChildAttachment < 0)
            pair_.bones[parent].firstChildAttachment = attachments_;
        pair_.bones[child].parent = static_cast<int>(parent);
        pair_.bones[child].attachment = attachments_++;
        ++pair_.bones[parent].children;
    }

    void RenameRoot(const std::string& name) {
        const auto root = names_.extract("root");
        pair_.bones[root.mapped()].name = name;
        names_[name] = root.mapped();
    }

    void EndLeaves() {
        const std::size_t count = pair_.bones.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (pair_.bones[i].children > 0 || pair_.bones[i].length < kShortest) continue;
            AcclaimBone end;
            end.name = pair_.bones[i].name + "_end";
            end.isEnd = true;
            pair_.bones.push_back(end);
            Attach(i, pair_.bones.size() - 1);
        }
    }

    void Add(const AcclaimBone& bone) {
        names_.emplace(bone.name, pair_.bones.size());
        pair_.bones.push_back(bone);
    }

    std::vector<Words> lines_;
    std::size_t at_ = 0;
    int attachments_ = 0;
    AcclaimPair pair_;
    std::unordered_map<std::string, std::size_t> names_;
};

void ReadFrames(const std::string& amc, const std::unordered_map<std::string, std::size_t>& names,
                AcclaimPair& pair) {
    bool inHeader = true;
    for (const Words& words : Lines(amc)) {
        const bool isKeyword = words[0][0] == ':';
        if (inHeader && isKeyword) continue;
        inHeader = false;
        if (words.size() == 1 && std::isalpha(static_cast<unsigned char>(words[0][0])) == 0) {
            pair.frames.push_back({std::atoi(words[0].c_str()), {}});
            pair.frames.back().values.resize(pair.bones.size());
            continue;
        }
        auto& values = pair.frames.back().values[names.at(Lower(words[0]))];
        for (std::size_t i = 1; i < words.size(); ++i)
            values.push_back(Number(words[i]));
    }
}

// This element of R = Rz * Ry * Rx is -sin(ry). If the sine is this close to 1, the cosine is below
// 1e-5.
bool IsNearRightAngle(const Matrix3& turn) {
    return std::fabs(turn[2][0]) > 1.0 - 0.5e-10;
}

// The state of one bone in a frame.
struct BoneState {
    Matrix3 motion = kIdentity3;  // M
    Vec3 position;                // of a root
    double length;
};

BoneState StateOf(const AcclaimPair& pair, const AcclaimBone& bone,
                  const std::vector<double>& values) {
    const double unit = pair.degrees ? Radians(1.0) : 1.0;
    BoneState state{kIdentity3, bone.position, bone.length};
    for (std::size_t i = 0; i < values.size(); ++i) {
        double value = values[i];
        if (pair.limited && bone.limits[i]) {
            value = std::max(value, bone.limits[i]->first);
            value = std::min(value, bone.limits[i]->second);
        }
        const std::string& channel = bone.dof[i];
        if (channel == "|")
            state.length = value * pair.lengthFactor;
        else if (channel[0] == 'r')
            state.motion = ColumnRotation(channel[1], value * unit) * state.motion;
        else if (bone.isRoot)
            state.position[static_cast<std::size_t>(channel[1] - 'x')] =
                pair.factorIsGiven ? value * pair.lengthFactor : value;
    }
    return state;
}

Matrix3 AxisFrame(const AcclaimPair& pair, const AcclaimBone& bone) {
    const double unit = pair.degrees ? Radians(1.0) : 1.0;
    Matrix3 frame = kIdentity3;
    for (std::size_t i = 0; i < 3; ++i)
        frame =
            ColumnRotation(pair.axesAsListed ? bone.axisOrder[i] : "xyz"[i], bone.axis[i] * unit) *
            frame;
    return frame;
}

// Lists every parent before its children, whatever the order of the file.
std::vector<std::size_t> WalkOrder(const std::vector<AcclaimBone>& bones) {
    std::vector<std::vector<std::size_t>> children(bones.size());
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < bones.size(); ++i) {
        if (bones[i].parent < 0)
            order.push_back(i);
        else
            children[static_cast<std::size_t>(bones[i].parent)].push_back(i);
    }
    for (std::size_t i = 0; i < order.size(); ++i)
        order.insert(order.end(), children[order[i]].begin(), children[order[i]].end());
    if (order.size() != bones.size()) throw std::runtime_error("the hierarchy has a cycle");
    return order;
}

}  // namespace

bool AcclaimBone::HasRotation() const {
    return std::any_of(dof.begin(), dof.end(), [](const auto& token) { return token[0] == 'r'; });
}

bool AcclaimBone::AnimatesLength() const {
    return std::find(dof.begin(), dof.end(), "|") != dof.end();
}

bool AcclaimBone::AnimatesAnything() const {
    return std::any_of(dof.begin(), dof.end(),
                       [this](const auto& token) { return isRoot || token[0] != 't'; });
}

AcclaimPair::Pose AcclaimPair::At(const AcclaimFrame& frame) const {
    Pose pose;
    pose.positions.resize(bones.size());
    pose.nearRightAngle.resize(bones.size());
    std::vector<Matrix3> turns(bones.size());
    std::vector<double> lengths(bones.size());
    std::vector<double> reach(bones.size());
    for (const std::size_t i : WalkOrder(bones)) {
        const AcclaimBone& bone = bones[i];
        const BoneState state = StateOf(*this, bone, frame.values[i]);
        const Matrix3 axes = AxisFrame(*this, bone);
        const Matrix3 own = axes * state.motion * Transposed(axes);
        lengths[i] = state.length;
        pose.nearRightAngle[i] = IsNearRightAngle(state.motion) || IsNearRightAngle(own);
        if (bone.parent < 0) {
            pose.positions[i] = state.position;
            turns[i] = own;
            continue;
        }
        const auto p = static_cast<std::size_t>(bone.parent);
        turns[i] = turns[p] * own;
        const Vec3& along = bones[p].direction;
        reach[i] =
            reach[p] + Length(along) * std::max(std::fabs(bones[p].length), std::fabs(lengths[p]));
        pose.size = std::max(pose.size, reach[i]);
        pose.positions[i] = Add(pose.positions[p], turns[p] * Scale(along, lengths[p]));
    }
    return pose;
}

AcclaimPair ReadAcclaim(const std::string& asf, const std::string& amc,
                        const AcclaimReading& reading) {
    AsfReader reader(asf, reading);
    AcclaimPair pair = reader.Read();
    ReadFrames(amc, reader.Names(), pair);
    return pair;
}

}  // namespace support
