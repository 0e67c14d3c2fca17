// Parses an Acclaim pair without an importer and without a session of the host.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "acclaim/acclaim_parser.h"
#include "tests/support/acclaim/acclaim_texts.h"

namespace support {

class ParsedAcclaim {
  public:
    // Parses a whole skeleton file.
    Outcome Parse(std::string_view asf);
    // Parses the frames of a motion file, without its header, for the skeleton that was parsed.
    Outcome ParseMotion(std::string_view frames);

    // The keys of a node's slot; none without a motion.
    TestCurve Keys(const std::string& node, std::size_t slot);
    // The first node of that name; throws when there is none.
    MOCAPMODEL& Node(const std::string& name);
    // The warnings of the last motion.
    const std::vector<std::string>& Warnings() const { return monitor_.warnings; }

  private:
    struct Monitor : ParseMonitor {
        void Warn(const std::wstring& message) override;
        std::vector<std::string> warnings;
    };

    void Open(std::string_view text);
    Outcome Report(std::int32_t status) const;

    CStringFile file_;
    FileAllowances allowances_;
    Monitor monitor_;

  public:
    MocapSkeleton skeleton;
    AcclaimParser parser{file_, skeleton, allowances_, monitor_};
};

}  // namespace support
