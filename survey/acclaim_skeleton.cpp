#include "survey/acclaim_skeleton.h"

#include <algorithm>

#include "survey/acclaim_words.h"

namespace survey {

bool AsfBone::Has(Dof sought) const {
    return std::find(dof.begin(), dof.end(), sought) != dof.end();
}

bool BoneNames::Add(const std::string& name, std::uint32_t bone) {
    return bones_.emplace(ToLowerText(name), bone).second;
}

void BoneNames::Remove(const std::string& name) {
    bones_.erase(ToLowerText(name));
}

std::uint32_t BoneNames::Find(std::string_view name) const {
    const auto found = bones_.find(ToLowerText(name));
    return found == bones_.end() ? kNoBone : found->second;
}

}  // namespace survey
