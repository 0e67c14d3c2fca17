#include "survey/asf_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "survey/number_word.h"
#include "text/number_text.h"

namespace survey {
namespace {

constexpr int kDecimals = 12;  // the most decimals of a computed number
constexpr const char* kDofWords[] = {"tx", "ty", "tz", "rx", "ry", "rz", "|"};

// Clamps a value to the finite numbers. A value that is computed from very large numbers may be
// infinite.
double Finite(double value) {
    return std::clamp(value, std::numeric_limits<double>::lowest(),
                      std::numeric_limits<double>::max());
}

class Writer {
  public:
    Writer(const AsfSkeleton& skeleton, const SourceText& source)
        : skeleton_(skeleton), out_(source), text_(out_.text), first_(source.Text().data()) {}

    std::shared_ptr<const MendedText> Write() {
        out_.Mark(first_);
        WriteHead();
        WriteRoot();
        text_ += ":bonedata\n";
        std::size_t id = 0;
        for (const std::uint32_t bone : skeleton_.order)
            if (bone != 0) WriteBone(skeleton_.bones[bone], ++id);
        WriteHierarchy();
        return out_.Finish();
    }

  private:
    void WriteHead() {
        text_ += ":version ";
        AppendNumber(text_, skeleton_.version);
        text_ += '\n';
        if (!skeleton_.name.empty()) text_ += ":name " + skeleton_.name + '\n';
        text_ += ":units\n  mass " + skeleton_.mass + "\n  length ";
        AppendNumber(text_, skeleton_.length);
        text_ += skeleton_.degrees ? "\n  angle deg\n" : "\n  angle rad\n";
        if (!skeleton_.hasDocumentation) return;
        out_.Mark(skeleton_.documentationAt);
        text_ += ":documentation" + skeleton_.documentation + '\n';
    }

    void WriteVector(const char* keyword, const AsfVector& vector) {
        text_ += keyword;
        for (const AsfNumber& number : vector) {
            text_ += ' ';
            AppendNumber(text_, number);
        }
    }

    void WriteRoot() {
        const AsfBone& root = skeleton_.Root();
        out_.Mark(root.at);
        text_ += ":root\n";
        WriteDofs("  order", root);
        text_ += "  axis XYZ\n";
        WritePosition();
        WriteVector("\n  orientation", root.axis);
        text_ += '\n';
    }

    void WritePosition() {
        if (!skeleton_.writtenPosition) return WriteVector("  position", skeleton_.position);
        text_ += "  position";
        for (const double number : *skeleton_.writtenPosition)
            text_ += ' ' + text::NumberText(Finite(number));
    }

    void WriteDofs(const char* keyword, const AsfBone& bone) {
        std::string words;
        for (const Dof dof : bone.dof)
            if (!bone.IsLeftOut(dof)) words += std::string(" ") + kDofWords[static_cast<int>(dof)];
        if (!words.empty()) text_ += keyword + words + '\n';
    }

    void WriteBone(const AsfBone& bone, std::size_t id) {
        out_.Mark(bone.at);
        text_ += "  begin\n    id " + std::to_string(id) + "\n    name " + bone.name + '\n';
        WriteVector("    direction", bone.direction);
        text_ += "\n    length ";
        AppendNumber(text_, bone.length);
        text_ += '\n';
        WriteVector("    axis", bone.axis);
        text_ += " XYZ\n";
        WriteDofs("    dof", bone);
        WriteLimits(bone);
        text_ += "  end\n";
    }

    void WriteLimits(const AsfBone& bone) {
        const char* keyword = "    limits (";
        for (std::size_t i = 0; i < bone.dof.size() && !bone.limits.empty(); ++i) {
            if (bone.IsLeftOut(bone.dof[i])) continue;
            text_ += keyword;
            AppendNumber(text_, bone.limits[2 * i]);
            text_ += ' ';
            AppendNumber(text_, bone.limits[2 * i + 1]);
            text_ += ")\n";
            keyword = "           (";
        }
    }

    void WriteHierarchy() {
        text_ += ":hierarchy\n  begin\n";
        for (const std::uint32_t index : skeleton_.order) {
            const AsfBone& bone = skeleton_.bones[index];
            if (index != 0 && bone.children.empty()) continue;
            if (!bone.children.empty())
                out_.Mark(skeleton_.bones[bone.children.front()].attachedAt);
            text_ += "    " + bone.name;
            for (const std::uint32_t child : bone.children)
                text_ += ' ' + skeleton_.bones[child].name;
            text_ += '\n';
        }
        text_ += "  end\n";
    }

    const AsfSkeleton& skeleton_;
    MarkedText out_;
    std::string& text_;
    const char* first_;
};

}  // namespace

void AppendNumber(std::string& out, const AsfNumber& number) {
    if (!number.text.empty()) {
        // A finite number whose word is not plain is a zero, in a form that the plug-in refuses,
        // such as ".0".
        if (IsPlainWord(number.text, number.value) || !std::isfinite(number.value))
            out += number.text;
        else
            out += '0';
        return;
    }
    std::array<char, text::kLongestNumber> digits{};
    const char* const last = text::WriteNumber(digits.data(), Finite(number.value), kDecimals);
    out.append(digits.data(), static_cast<std::size_t>(last - digits.data()));
}

std::shared_ptr<const MendedText> WriteAsf(const AsfSkeleton& skeleton, const SourceText& source) {
    return Writer(skeleton, source).Write();
}

}  // namespace survey
