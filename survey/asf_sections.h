// Reads the sections of an ASF file. A section goes from the word after its keyword to the next
// keyword.
#pragma once

#include "survey/asf_values.h"

namespace survey {

struct AsfContext {
    AsfWords& words;
    FindingList& findings;
    AsfSkeleton& skeleton;
};

// Whether the word is the keyword of a section that the format knows.
bool IsAsfSection(const AsfWord& word);
// Reports an unknown word and skips its line. `mended` says that the plug-in cannot read the word,
// so that the mended text leaves it out.
void SkipUnknown(AsfContext& context, const AsfWord& word, bool mended);

void ReadAsfUnits(AsfContext& context);
void ReadAsfRoot(AsfContext& context);
void ReadAsfBones(AsfContext& context);

// Reads the :hierarchy sections. `starts` has one position for each of these sections: the end of
// its keyword. There must be at least one section. Gives bones their parents and children, and
// fills in `skeleton.order`. `hasRoot` says that there is a :root section; if there is none, an
// error is reported.
void ReadAsfHierarchy(FindingList& findings, const std::vector<const char*>& starts, bool hasRoot,
                      AsfSkeleton& skeleton);

}  // namespace survey
