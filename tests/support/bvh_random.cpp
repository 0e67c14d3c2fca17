#include "tests/support/bvh_random.h"

#include <algorithm>
#include <random>
#include <sstream>
#include <vector>

namespace support {
namespace {

class Maker {
  public:
    explicit Maker(std::uint64_t seed) : random_(seed) {}

    std::string Make() {
        out_ << "HIERARCHY\n";
        const int roots = Chance(10) ? 2 : 1;
        budget_ = 1 + Below(24);
        for (int i = 0; i < roots; ++i)
            Joint("ROOT", 0);
        Motion(static_cast<int>(Below(5)) + 1);
        return out_.str();
    }

  private:
    // The standard distributions are not used, because they differ between libraries.
    std::uint32_t Below(std::uint32_t n) { return static_cast<std::uint32_t>(random_() % n); }
    bool Chance(std::uint32_t percent) { return Below(100) < percent; }
    double Number(double range) {
        return (static_cast<double>(Below(2000001)) / 1000000.0 - 1.0) * range;
    }

    void Offset(bool mayBeZero) {
        out_ << "OFFSET ";
        if (mayBeZero && Chance(15))
            out_ << "0 0 0\n";
        else if (Chance(30))
            out_ << "0 " << Number(20) << " 0\n";
        else
            out_ << Number(20) << ' ' << Number(20) << ' ' << Number(20) << '\n';
    }

    void Channels(bool isRoot) {
        std::vector<std::string> names;
        if (Chance(isRoot ? 85 : 12)) names = {"Xposition", "Yposition", "Zposition"};
        std::vector<std::string> turns = {"Xrotation", "Yrotation", "Zrotation"};
        std::swap(turns[0], turns[Below(3)]);
        std::swap(turns[1], turns[1 + Below(2)]);
        turns.resize(Chance(80) ? 3 : Below(4));
        if (Chance(10))
            names.insert(names.begin(), turns.begin(), turns.end());
        else
            names.insert(names.end(), turns.begin(), turns.end());
        if (names.empty() && Chance(50)) return;
        out_ << "CHANNELS " << names.size();
        for (const std::string& name : names) {
            out_ << ' ' << name;
            isPosition_.push_back(name[1] == 'p');
        }
        out_ << '\n';
    }

    void Joint(const char* keyword, int depth) {
        static constexpr const char* kNames[] = {"Hips", "Leg", "probe", "Arm.L", "a:b", "Leg1"};
        if (budget_ > 0) --budget_;
        out_ << keyword << ' ' << kNames[Below(6)] << " {\n";
        Offset(true);
        Channels(depth == 0);
        std::uint32_t children = budget_ == 0 || depth > 12 ? 0 : Chance(60) ? 1 : Below(4);
        for (; children > 0 && budget_ > 0; --children) {
            Joint("JOINT", depth + 1);
        }
        if (budget_ == 0 ? Chance(90) : Chance(40)) EndSite();
        out_ << "}\n";
    }

    void EndSite() {
        out_ << "End Site {\n";
        Offset(true);
        out_ << "}\n";
    }

    void Motion(int frames) {
        out_ << "MOTION\nFrames: " << frames << "\nFrame Time: 0.0333333\n";
        for (; frames > 0; --frames) {
            for (const bool position : isPosition_)
                out_ << Value(position) << ' ';
            out_ << '\n';
        }
    }

    double Value(bool position) {
        if (position) return Number(50);
        if (Chance(8)) return 90.0 * (static_cast<double>(Below(9)) - 4.0);
        return Number(180);
    }

    std::mt19937_64 random_;
    std::ostringstream out_;
    std::vector<bool> isPosition_;
    std::uint32_t budget_ = 0;  // the joints that may still be written
};

}  // namespace

std::string RandomBvh(std::uint64_t seed) {
    return Maker(seed).Make();
}

}  // namespace support
