#include "tests/support/acclaim/acclaim_random.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace support {
namespace {

constexpr double kDegree = 0.017453292519943295;

class Maker {
  public:
    explicit Maker(std::uint64_t seed) : random_(seed) {}

    AcclaimTexts Make() {
        degrees_ = Chance(75);
        bones_.resize(Below(20));
        for (std::size_t i = 0; i < bones_.size(); ++i)
            bones_[i].parent = i == 0 || Chance(15) ? -1
                               : Chance(60)         ? static_cast<int>(i) - 1
                                                    : static_cast<int>(Below(i));
        texts_.limits = Chance(40);
        if (Chance(25)) texts_.length = Chance(50) ? 0.056444 : 1.0 + std::fabs(Number(3));
        rootName_ = Chance(30) ? "hips" : "root";
        Skeleton();
        Motion();
        return texts_;
    }

  private:
    struct Bone {
        int parent = -1;  // -1 is the root
        std::vector<std::string> dof;
    };

    // The standard distributions are not used, because they differ between libraries.
    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(random_() % n); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    double Number(double range) {
        return (static_cast<double>(Below(2000001)) / 1000000.0 - 1.0) * range;
    }

    template <class List>
    void Shuffle(List& list) {
        for (std::size_t i = list.size(); i > 1; --i)
            std::swap(list[i - 1], list[Below(i)]);
    }

    void Put(const std::string& text) { *out_ += text; }
    void Put(double value) {
        char text[40];
        std::snprintf(text, sizeof(text), " %.17g", value);
        *out_ += text;
    }
    void PutVector(const std::string& keyword, double x, double y, double z) {
        Put(keyword);
        Put(x);
        Put(y);
        Put(z);
    }
    void PutList(const std::string& keyword, const std::vector<std::string>& words) {
        Put(keyword);
        for (const std::string& word : words)
            Put(" " + word);
        Put("\n");
    }

    double Angle() {
        double angle = Number(180);
        if (Chance(8)) angle = 90.0 * (static_cast<double>(Below(9)) - 4.0);
        // This is within 1e-5 radians of a right angle, which the decomposition takes for one.
        if (Chance(2)) angle = 90.0 + Number(5e-4);
        return degrees_ ? angle : angle * kDegree;
    }

    void Angles(const std::string& keyword) {
        if (Chance(30))
            PutVector(keyword, 0, 0, 0);
        else
            PutVector(keyword, Angle(), Angle(), Angle());
    }

    std::string AxisOrder() {
        static constexpr const char* kOthers[] = {"XZY", "yxz", "YZX", "zxy", "ZYX"};
        return Chance(92) ? (Chance(50) ? "XYZ" : "xyz") : kOthers[Below(5)];
    }

    std::string NameOf(int bone) { return bone < 0 ? rootName_ : "bone" + std::to_string(bone); }

    void Skeleton() {
        out_ = &texts_.asf;
        Put("# made for a test\n:version 1.10\n:name random\n:units\n");
        if (Chance(70)) Put("  mass 1.0\n");
        if (Chance(70)) Put(Chance(50) ? "  length 0.45\n" : "  length 2.5\n");
        if (!degrees_ || Chance(70)) Put(degrees_ ? "  angle deg\n" : "  angle rad\n");
        if (Chance(50)) Put(":documentation\n   words, (and more) of them\n");
        const bool rootFirst = Chance(95);
        if (rootFirst) Root();
        BoneData();
        if (!rootFirst) Root();
        Hierarchy();
    }

    void Root() {
        Put(":root\n");
        root_ = {"TX", "TY", "TZ", "RX", "RY", "RZ"};
        if (Chance(40)) Shuffle(root_);
        if (Chance(20)) root_.resize(Below(7));
        PutList("  order", root_);
        Put("  axis " + AxisOrder() + "\n");
        if (Chance(80)) PutVector("  position", Number(50), Number(50), Number(50));
        Angles("\n  orientation");
        Put("\n");
    }

    void BoneData() {
        Put(":bonedata\n");
        std::vector<int> order(bones_.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = static_cast<int>(i);
        if (Chance(6)) Shuffle(order);
        for (const int bone : order)
            OneBone(bone);
    }

    void OneBone(int index) {
        Put("  begin\n    id " + std::to_string(index + 1) + "\n    name " + NameOf(index) + "\n");
        double v[3] = {Number(1), Number(1), Number(1)};
        const double size = Chance(80) ? std::hypot(v[0], v[1], v[2]) : 1.0;
        if (Chance(10)) v[0] = v[1] = 0.0;
        if (Chance(3)) v[2] = 0.0;
        PutVector("    direction", v[0] / size, v[1] / size, v[2] / size);
        Put("\n");
        if (Chance(90)) {
            Put("    length");
            Put(Chance(10) ? 0.005 : 1.0 + std::fabs(Number(10)));
            Put("\n");
        }
        Angles("    axis");
        Put(" " + AxisOrder() + "\n    bodymass 3.5 of no use\n");
        Freedom(bones_[static_cast<std::size_t>(index)]);
        Put("  end\n");
    }

    void Freedom(Bone& bone) {
        if (Chance(10)) return;
        bone.dof = {"rx", "ry", "rz"};
        if (Chance(40)) Shuffle(bone.dof);
        if (Chance(30)) bone.dof.resize(Below(4));
        const auto insert = [&](const char* token) {
            bone.dof.insert(
                bone.dof.begin() + static_cast<std::ptrdiff_t>(Below(bone.dof.size() + 1)), token);
        };
        if (Chance(10)) insert("ty");
        if (Chance(8)) insert("|");
        if (bone.dof.empty()) return;
        PutList("    dof", bone.dof);
        if (!Chance(70)) return;
        Put("    limits");
        for (std::size_t i = 0; i < bone.dof.size(); ++i) {
            const double a = Angle();
            const double b = Angle();
            Put(Chance(10) ? " (-inf" : " (" + std::to_string(std::min(a, b)));
            Put(Chance(10) ? " inf)\n" : " " + std::to_string(std::max(a, b)) + ")\n");
        }
    }

    void Hierarchy() {
        std::vector<int> parents(bones_.size());
        for (std::size_t i = 0; i < parents.size(); ++i)
            parents[i] = static_cast<int>(i);
        if (Chance(8)) Shuffle(parents);
        // The first line names the root.
        parents.insert(parents.begin(), -1);
        Put(":hierarchy\n  begin\n");
        for (const int parent : parents) {
            std::vector<std::string> children;
            for (std::size_t i = 0; i < bones_.size(); ++i)
                if (bones_[i].parent == parent) children.push_back(NameOf(static_cast<int>(i)));
            if (parent < 0 || !children.empty()) PutList("    " + NameOf(parent), children);
        }
        Put("  end\n");
    }

    void Motion() {
        out_ = &texts_.amc;
        Put("#!OML:ASF\n");
        if (Chance(40)) Put(":SAMPLES-PER-SECOND 120\n");
        Put(":FULLY-SPECIFIED\n");
        if (Chance(80)) Put(degrees_ ? ":DEGREES\n" : ":RADIANS\n");
        std::vector<int> order(bones_.size() + 1);
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = static_cast<int>(i) - 1;
        if (Chance(30)) Shuffle(order);
        int number = Chance(70) ? 1 : static_cast<int>(Below(1000));
        for (std::size_t frames = 1 + Below(4); frames > 0; --frames) {
            Put(std::to_string(number) + "\n");
            for (const int bone : order)
                Record(bone);
            number += Chance(80) ? 1 : 1 + static_cast<int>(Below(5));
        }
    }

    void Record(int bone) {
        const bool isRoot = bone < 0;
        const auto& channels = isRoot ? root_ : bones_[static_cast<std::size_t>(bone)].dof;
        const bool animated = std::any_of(channels.begin(), channels.end(), [&](const auto& token) {
            return isRoot || token[0] != 't';
        });
        if (!animated) return;
        Put(NameOf(bone));
        for (const std::string& channel : channels)
            Put(channel == "|"                           ? Number(10)
                : channel[0] == 't' || channel[0] == 'T' ? Number(50)
                                                         : Angle());
        Put("\n");
    }

    std::mt19937_64 random_;
    AcclaimTexts texts_;
    std::string* out_ = nullptr;
    bool degrees_ = true;
    std::string rootName_;
    std::vector<std::string> root_;
    std::vector<Bone> bones_;
};

}  // namespace

AcclaimTexts RandomAcclaim(std::uint64_t seed) {
    return Maker(seed).Make();
}

}  // namespace support
