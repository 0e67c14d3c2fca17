// The sections of an ASF file, each read from after its keyword to the next one.
#pragma once

#include "survey/asf_values.h"

namespace survey {

struct AsfContext {
    AsfWords& words;
    FindingList& findings;
    AsfSkeleton& skeleton;
};

// Whether the word begins a section that the format knows.
bool IsAsfSection(const AsfWord& word);
// An unknown word: told, and its line is passed over. `mended`: the plug-in stumbles over it.
void PassUnknown(AsfContext& context, const AsfWord& word, bool mended);

void ReadAsfUnits(AsfContext& context);
void ReadAsfRoot(AsfContext& context);
void ReadAsfBones(AsfContext& context);

// Attaches the bones as the sections say that begin at `starts`, and puts the bones in order.
// Without a section nothing is attached.
void ReadAsfHierarchy(FindingList& findings, const std::vector<const char*>& starts, bool hasRoot,
                      AsfSkeleton& skeleton);

}  // namespace survey
