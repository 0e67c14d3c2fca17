// Reads the :hierarchy section of an ASF file, which gives each bone its parent.
#include <algorithm>

#include "survey/amc_header.h"
#include "survey/asf_sections.h"
#include "survey/codes.h"
#include "survey/encoding.h"
#include "text/utf8.h"

namespace survey {
namespace {

// Iterates over the lines of a :hierarchy section. Each line is a parent followed by its children.
class HierarchyLines {
  public:
    HierarchyLines(std::string_view text, const char* start)
        : words_(text.substr(static_cast<std::size_t>(start - text.data()))) {
        hasBegin_ = words_.Peek().Is("begin");
        if (hasBegin_) words_.Next();
    }

    // Moves to the next line and sets `parent` to its first word. Returns false after the last
    // line.
    bool NextParent(AsfWord& parent) {
        if (!isFirst_) words_.SkipLine();
        isFirst_ = false;
        if (words_.Peek().IsEnd() || words_.Peek().IsKeyword()) return false;
        parent = words_.Next();
        hasEnd_ = parent.Is("end");
        return !hasEnd_;
    }
    bool NextChild(AsfWord& child) {
        if (words_.Peek().IsEnd() || words_.Peek().startsLine) return false;
        child = words_.Next();
        return true;
    }
    // Whether the section begins with "begin" and ends with "end". To be called when NextParent has
    // returned false.
    bool IsWhole() const { return hasBegin_ && hasEnd_; }

  private:
    AsfWords words_;
    bool hasBegin_ = false;
    bool hasEnd_ = false;
    bool isFirst_ = true;
};

std::string NameOf(const AsfWord& word) {
    return text::IsValidUtf8(word.text) ? std::string(word.text) : Windows1252ToUtf8(word.text);
}

class Hierarchy {
  public:
    Hierarchy(FindingList& findings, const std::vector<const char*>& starts, AsfSkeleton& skeleton)
        : findings_(findings), starts_(starts), skeleton_(skeleton), bones_(skeleton.bones) {}

    void Read() {
        NameRoot();
        linesAt_.resize(bones_.size());
        for (const char* start : starts_) {
            HierarchyLines lines(findings_.Source().Text(), start);
            for (AsfWord parent; lines.NextParent(parent);)
                ReadLine(lines, parent);
            if (!lines.IsWhole()) skeleton_.changed = true;
        }
        if (starts_.size() > 1) skeleton_.changed = true;
        if (findings_.HasErrors()) return;
        OrderBones();
        if (findings_.HasErrors()) return;
        ReportOrder();
        ReportUnattached();
    }

  private:
    void Fail(std::string_view code, const char* at, const std::string& message,
              const std::string& bone) {
        if (!findings_.AddAgain(code, Severity::Error))
            findings_.Add({code, Severity::Error, at, message, bone});
    }

    // Finds the root's name. If a line begins with "root", that is the name. If no line does, the
    // name is the first word that begins a line and is not the name of a bone. Whole numbers are
    // passed over, because in a motion they would be read as frame numbers. If no line begins with
    // such a word, the name is "root".
    void NameRoot() {
        std::string name;
        double number = 0.0;
        for (const char* start : starts_) {
            HierarchyLines lines(findings_.Source().Text(), start);
            for (AsfWord parent; lines.NextParent(parent);) {
                if (skeleton_.names.Find(NameOf(parent)) != kNoBone) {
                    if (name.empty() && !firstLine_) isRootLate_ = true;
                } else if ((name.empty() && !IsFrameNumber(parent.text, number)) ||
                           parent.Is("root")) {
                    name = NameOf(parent);
                }
                if (!firstLine_) firstLine_ = parent.text.data();
                if (parent.Is("root")) break;
            }
        }
        if (name.empty()) {
            isRootLate_ = firstLine_ != nullptr;
            name = "root";
        }
        bones_[0].name = name;
        if (!skeleton_.names.Add(name, 0))
            Fail(codes::kBoneDuplicate, bones_[skeleton_.names.Find(name)].at,
                 "the bone \"" + name + "\" has the root's name", name);
    }

    std::uint32_t Find(const AsfWord& word) {
        const std::string name = NameOf(word);
        const std::uint32_t bone = skeleton_.names.Find(name);
        if (bone == kNoBone)
            Fail(codes::kHierarchyUnknown, word.text.data(),
                 "the hierarchy names the bone \"" + name + "\", which is not defined", name);
        return bone;
    }

    void ReadLine(HierarchyLines& lines, const AsfWord& first) {
        const std::uint32_t parent = Find(first);
        if (parent != kNoBone && !linesAt_[parent]) linesAt_[parent] = first.text.data();
        for (AsfWord word; lines.NextChild(word);) {
            const std::uint32_t child = Find(word);
            if (parent != kNoBone && child != kNoBone) Attach(parent, child, word.text.data());
        }
    }

    void Attach(std::uint32_t parent, std::uint32_t child, const char* at) {
        AsfBone& bone = bones_[child];
        if (child == 0) {
            Fail(codes::kHierarchyCycle, at, "the root is listed as a child", bone.name);
        } else if (bone.parent == kNoBone) {
            bone.parent = parent;
            bone.attachedAt = at;
            bones_[parent].children.push_back(child);
        } else if (bone.parent == parent) {
            skeleton_.changed = true;
        } else if (IsAbove(child, parent)) {
            Fail(codes::kHierarchyCycle, at, "the bone \"" + bone.name + "\" is its own ancestor",
                 bone.name);
        } else {
            Fail(codes::kBoneDuplicate, at,
                 "the bone \"" + bone.name + "\" is listed as a child of \"" +
                     bones_[bone.parent].name + "\" and of \"" + bones_[parent].name + "\"",
                 bone.name);
        }
    }

    // Whether the bone `above` is `bone` or one of its ancestors. All calls together may take
    // kLooksPerBone steps for each bone of the skeleton. After that, returns false, and the caller
    // reports another error.
    bool IsAbove(std::uint32_t above, std::uint32_t bone) {
        for (; bone != kNoBone && looks_ < kLooksPerBone * bones_.size(); ++looks_) {
            if (bone == above) return true;
            bone = bones_[bone].parent;
        }
        return false;
    }

    // Fills `order` with all bones: parents come before their children. Apart from that, the bones
    // stay in the order of the file. Reports an error if a bone is its own ancestor.
    void OrderBones() {
        // By bone: 1 while it waits for its parent, 2 when it is in `order`.
        std::vector<std::uint8_t> state(bones_.size());
        std::vector<std::uint32_t> waiting;
        for (std::uint32_t bone = 0; bone < bones_.size(); ++bone) {
            std::uint32_t next = bone;
            for (; next != kNoBone && state[next] == 0; next = bones_[next].parent) {
                state[next] = 1;
                waiting.push_back(next);
            }
            if (next != kNoBone && state[next] == 1)
                Fail(codes::kHierarchyCycle, bones_[next].attachedAt,
                     "the bone \"" + bones_[next].name + "\" is its own ancestor",
                     bones_[next].name);
            for (; !waiting.empty(); waiting.pop_back()) {
                state[waiting.back()] = 2;
                skeleton_.order.push_back(waiting.back());
            }
        }
    }

    void ReportOrder() {
        const auto add = [&](const char* at, const std::string& message, const std::string& bone) {
            if (!findings_.AddAgain(codes::kHierarchyOrder, Severity::Note))
                findings_.Add({codes::kHierarchyOrder, Severity::Note, at, message, bone, true});
        };
        if (isRootLate_)
            add(firstLine_, "the hierarchy does not begin with the root; it is put in order", "");
        for (std::uint32_t bone = 1; bone < bones_.size(); ++bone) {
            const AsfBone& child = bones_[bone];
            if (linesAt_[bone] && child.attachedAt && linesAt_[bone] < child.attachedAt)
                add(linesAt_[bone],
                    "the hierarchy lists the children of \"" + child.name +
                        "\" before the bone itself; it is put in order",
                    child.name);
            else if (IsListedBefore(child))
                add(child.at,
                    "the bone \"" + child.name + "\" is defined before its parent \"" +
                        bones_[child.parent].name + "\"; they are put in order",
                    child.name);
        }
    }

    bool IsListedBefore(const AsfBone& child) const {
        return child.parent != kNoBone && bones_[child.parent].at && child.at &&
               child.at < bones_[child.parent].at;
    }

    void ReportUnattached() {
        for (std::uint32_t bone = 1; bone < bones_.size(); ++bone) {
            if (bones_[bone].parent != kNoBone) continue;
            if (!findings_.AddAgain(codes::kBoneUnattached, Severity::Note))
                findings_.Add({codes::kBoneUnattached, Severity::Note, bones_[bone].at,
                               "the bone \"" + bones_[bone].name +
                                   "\" has no parent in the hierarchy; it is put under the model",
                               bones_[bone].name});
        }
    }

    static constexpr std::size_t kLooksPerBone = 8;

    FindingList& findings_;
    const std::vector<const char*>& starts_;
    AsfSkeleton& skeleton_;
    std::vector<AsfBone>& bones_;
    // By bone: where the first line begins that lists its children; null if there is none.
    std::vector<const char*> linesAt_;
    const char* firstLine_ = nullptr;  // where the first line begins
    std::size_t looks_ = 0;            // number of steps that IsAbove has taken so far
    bool isRootLate_ = false;          // whether the first line is not that of the root
};

}  // namespace

void ReadAsfHierarchy(FindingList& findings, const std::vector<const char*>& starts, bool hasRoot,
                      AsfSkeleton& skeleton) {
    if (!hasRoot)
        findings.Add({codes::kHierarchyUnknown, Severity::Error, starts.front(),
                      "the hierarchy has no root: there is no :root section", "root"});
    Hierarchy(findings, starts, skeleton).Read();
}

}  // namespace survey
