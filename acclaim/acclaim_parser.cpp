// Code that the ASF and the AMC parser share: it reads tokens, skips comments, and finds nodes by
// name.
#include "acclaim/acclaim_parser.h"

#include <cstring>
#include <limits>

namespace {

constexpr std::uint32_t kUnknown = std::numeric_limits<std::uint32_t>::max();

}  // namespace

AcclaimParser::AcclaimParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
                             FileAllowances& fileAllowances, ParseMonitor& parseMonitor)
    : MocapParser(fileReader, parsedSkeleton, fileAllowances, parseMonitor),
      hasSeparators(fileReader.RegisterWhiteSpaces("\t\r\n (),")),
      lastLinePosition(kUnknown) {}

void AcclaimParser::ForgetFile() {
    ForgetError();
    lastLinePosition = kUnknown;
    facts.lastFrame = 0;
}

void AcclaimParser::ForgetSkeleton() {
    ForgetFile();
    facts.degrees = true;
    facts.name.clear();
    facts.documentation.clear();
    names.Clear();
    namedNodes = 0;
    settledNodes = 0;
}

void AcclaimParser::OverrideLengthMultiplier(bool overrideMultiplier, double multiplier) {
    overrideLengthMultiplier = overrideMultiplier;
    if (overrideMultiplier) facts.lengthMultiplier = multiplier;
}

MOCAPMODEL* AcclaimParser::FindModelByName(const char* name) {
    const auto& models = skeleton.models;
    for (; namedNodes < models.size(); ++namedNodes)
        if (models[namedNodes]->name)
            names.Add(models[namedNodes]->name.get(), static_cast<std::uint32_t>(namedNodes));
    const std::uint32_t found = names.Find(name);
    return found == NodeNames::kNone ? nullptr : models[found].get();
}

const char* AcclaimParser::GetNextAccString() {
    for (;;) {
        const char* const token = stringFile.GetNextString();
        if (token == nullptr || token[0] != '#') return token;
        if (SkipLine()) continue;
        // The comment is in the last line. Moves back to its start, so that the next call finds the
        // comment again and does not return its words as tokens.
        const std::uint32_t end = stringFile.GetPosition();
        if (end < stringFile.GetSize())
            stringFile.SetPosition(end - static_cast<std::uint32_t>(std::strlen(token)));
        return nullptr;
    }
}

// The last line may be long and have many tokens. When the search for a line feed fails for the
// first time, the position is stored. From there on, the line feed is not searched for again.
bool AcclaimParser::SkipLine() {
    if (stringFile.GetPosition() >= lastLinePosition) return false;
    if (stringFile.GotoNextLine()) return true;
    lastLinePosition = stringFile.GetPosition();
    return false;
}
