// Reads the :bonedata section of an ASF file.
#include "survey/asf_sections.h"
#include "survey/codes.h"
#include "survey/quoted_word.h"

namespace survey {
namespace {

class BoneReader {
  public:
    explicit BoneReader(AsfContext& context)
        : context_(context), words_(context.words), values_(words_, context.findings) {
        values_.SetBone(&bone_.name);
    }

    // Reads the bone's parameters after the word `begin`, up to and including "end".
    AsfBone Read(const AsfWord& begin) {
        bone_.at = begin.text.data();
        for (;;) {
            const AsfWord word = words_.Peek();
            if (word.IsEnd() || word.Is("begin") || (word.startsLine && IsAsfSection(word))) {
                context_.skeleton.changed = true;  // because the bone has no "end"
                break;
            }
            words_.Next();
            if (word.Is("end")) break;
            ReadParameter(word);
        }
        Finish();
        return std::move(bone_);
    }

  private:
    void ReadParameter(const AsfWord& word) {
        if (word.Is("id")) {
            if (!words_.Peek().startsLine) words_.Next();
        } else if (word.Is("name")) {
            bone_.at = words_.Peek().text.data();
            bone_.name = values_.ReadName();
        } else if (word.Is("direction")) {
            bone_.directionAt = word.text.data();
            values_.ReadNumbers(word, "the direction", bone_.direction);
        } else if (word.Is("length")) {
            values_.ReadNumbers(word, "the length", {&bone_.length, 1});
        } else if (word.Is("axis")) {
            bone_.axisAt = word.text.data();
            if (values_.ReadNumbers(word, "the axis", bone_.axis))
                values_.ReadAxisOrder(word, bone_.axisOrder);
        } else if (word.Is("dof")) {
            bone_.dof.clear();
            bone_.dofAt = word.text.data();
            values_.ReadDofs(word, false, bone_);
        } else if (word.Is("limits")) {
            limitsAt_ = word;
            limitsRead_ = values_.ReadLimits(word, bone_.limits);
        } else if (!bone_.dof.empty() && IsDofWord(word.text)) {
            // The dofs continue on a second line.
            context_.skeleton.changed = true;
            words_.MoveTo(word.text.data(), false);
            values_.ReadDofs(word, false, bone_);
        } else {
            // Other parameters, such as "bodymass", are ignored.
            words_.SkipLine();
        }
    }

    void Finish() {
        if (bone_.name.empty()) {
            context_.findings.Add({codes::kNameMissing, Severity::Error, bone_.at,
                                   "a bone has no name; \"name\" and a word are expected"});
            return;
        }
        if (bone_.name.starts_with(':')) {
            context_.findings.Add({codes::kNameMissing, Severity::Error, bone_.at,
                                   "the bone's name " + Quoted(bone_.name) +
                                       " begins with a colon, as a keyword of the motion does; "
                                       "rename the bone",
                                   bone_.name});
            return;
        }
        if (bone_.dof.empty()) bone_.limits.clear();
        const std::size_t expected = 2 * bone_.dof.size();
        if (limitsRead_ && !bone_.limits.empty() && bone_.limits.size() != expected)
            values_.Fail(limitsAt_, "the limits are " + std::to_string(bone_.limits.size()) +
                                        " numbers where the degrees of freedom ask for " +
                                        std::to_string(expected));
    }

    AsfContext& context_;
    AsfWords& words_;
    AsfValues values_;
    AsfBone bone_;
    AsfWord limitsAt_;
    bool limitsRead_ = false;
};

void AddBone(AsfContext& context, AsfBone bone) {
    std::vector<AsfBone>& bones = context.skeleton.bones;
    if (bone.name.empty()) return;
    if (!context.skeleton.names.Add(bone.name, static_cast<std::uint32_t>(bones.size()))) {
        if (!context.findings.AddAgain(codes::kBoneDuplicate, Severity::Error))
            context.findings.Add({codes::kBoneDuplicate, Severity::Error, bone.at,
                                  "the bone \"" + bone.name + "\" is defined twice", bone.name});
        return;
    }
    bones.push_back(std::move(bone));
}

}  // namespace

void ReadAsfBones(AsfContext& context) {
    while (!context.words.Peek().IsEnd() && !context.words.Peek().IsKeyword()) {
        const AsfWord word = context.words.Next();
        if (word.Is("begin"))
            AddBone(context, BoneReader(context).Read(word));
        else
            SkipUnknown(context, word, true);
    }
}

}  // namespace survey
