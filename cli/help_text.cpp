#include "cli/help_text.h"

#include <cstddef>
#include <span>
#include <string_view>

#include "export/formats.h"

namespace cli {
namespace {

// The extensions of the outputs, with `separator` between them and `last` before the last one.
std::string Outputs(std::string_view separator, std::string_view last, bool withDot) {
    const std::span<const exporters::Format> formats = exporters::Formats();
    std::string list;
    for (std::size_t index = 0; index < formats.size(); ++index) {
        if (index > 0) list += index + 1 < formats.size() ? separator : last;
        list += formats[index].extension.substr(withDot ? 0 : 1);
    }
    return list;
}

// `text` with `list` in the place of "@outputs@".
std::string WithOutputs(std::string text, const std::string& list) {
    constexpr std::string_view kMark = "@outputs@";
    return text.replace(text.find(kMark), kMark.size(), list);
}

}  // namespace

const std::string kMainHelp =
    R"(zkhost - imports motion capture files through the plug-in, without a window

Usage:
  zkhost import FILE.bvh [OPTIONS]               a skeleton and its motion
  zkhost import SKEL.asf [MOTION.amc] [OPTIONS]  a skeleton, with a motion
  zkhost check FILE... [OPTIONS]                 what is wrong with files
  zkhost convert PATH... --to FORMAT --out-dir DIR  a whole data set
  zkhost command NAME [ARGUMENTS]                the plug-in's callback as it is

Example:
  zkhost import walk.bvh --tree -o walk.json

Options:
  -h, --help     this text; after a command, that command's
  --version      the version

Exit status:
  0    imported                        4    convert finished with failures
  1    failed or refused               5    imported in part, after an error
  2    wrong usage, or no plug-in      130  cancelled
  3    an output could not be written
)";

const std::string kImportHelp = WithOutputs(
    R"(Usage: zkhost import FILE.bvh | SKEL.asf [MOTION.amc]  [OPTIONS]
Example: zkhost import 07.asf 07_01.amc --preset cmu -o walk.glb

  --nulls, --bones          nulls (default) or chains of bones
  --[no-]chain-from-parent  chains start at the parent's joint (on)
  --effector-to-last-bone   hang a chain's effector under its last bone
  --[no-]group, --clip      gather what moves in a group (on); add a clip
  --limits                  Acclaim: hold the values within the limits
  --length X                Acclaim: multiply lengths by X, not the file's own
  --preset auto|cmu|none    metres and 120 a second (auto: where length is 0.45)
  --as-is, --strict         no survey, the file to the letter; refuse warnings
  --encoding NAME           of names that are no UTF-8 (Windows-1252)
  -o, --output FILE         @outputs@; may repeat
  --make-folders            make the folders that the outputs go to
  --scale X, --up y|z       exports: factor on lengths; the file's up axis (y)
  --fps N, --resample [N]   the take's rate; exports: sample at N, or at --fps
  --[no-]mesh, --digits N   glTF: a body of bones (on); BVH: decimal places
  --tree                    list the scene: names, types, places at rest
  --quiet                   no summary; of the log errors and warnings only
  --timing                  load_ms=..., and write_ms=... for each output
  --progress auto|on|off    a bar to cancel by (auto: on a terminal)
  --plugin PATH             the plug-in to load
  -h, --help                this text
)",
    Outputs(" ", " ", true));

const std::string kCheckHelp =
    R"(Usage: zkhost check FILE...  [OPTIONS]
Example: zkhost check takes/*.bvh

Says what is odd about .bvh, .asf and .amc files, without importing them, and
what they hold: joints, frames, rate, height, likely unit and up axis. An .asf
and the .amc files after it are looked at together. A finding is a line
  FILE:LINE:COLUMN: SEVERITY: WORDS [CODE]
  error    refused by 'zkhost import'
  warning  mended or kept, but something was lost or is likely not meant
  note     worth knowing; nothing is lost
  --json             one JSON object a file and line
  --fix              write each file in a form that every reader takes;
                     a file with an error is not written
    -o, --output OUT    where to, of one file
    --out-dir DIR       where to, under the files' own names
  --strict           a warning fails too
  --encoding NAME    of names that are no UTF-8 (Windows-1252)
  -h, --help         this text
Exit status: 0, or 1 with an error in a file, 2 wrong usage,
  3 a fixed file could not be written
)";

const std::string kConvertHelp = WithOutputs(
    R"(Usage: zkhost convert PATH... --to FORMAT --out-dir DIR  [OPTIONS]
Example: zkhost convert takes/ --to glb --out-dir out

Imports every .bvh, .asf and .amc file, each in a process of its own, and writes
DIR/index.csv. Folders are walked; their tree is kept. An .amc goes with the
.asf of its folder whose name begins its (07.asf, 07_01.amc), or the only one.
  --to FORMAT        @outputs@
  --out-dir DIR      where the outputs go, by the names of the sources
  --asf FILE         the skeleton of every .amc
  -j, --jobs N       imports at a time (as many as there are processors)
  --time-limit X     stop an import after X seconds (600; 0: never)
  --resume           leave out what was converted and is newer than its source
  --plan             print a command line for each import; run nothing
  --plugin PATH      the plug-in to load
For each import, as 'zkhost import --help' says:
  --nulls --bones --[no-]chain-from-parent --effector-to-last-bone --[no-]group
  --clip --as-is --strict --encoding NAME --scale X --up y|z --fps N
  --resample [N] --[no-]mesh --digits N;
  of Acclaim files: --limits --length X --preset auto|cmu|none
Exit status: 0 all converted, 4 some failed, 130 cancelled (and can be resumed),
  2 wrong usage, 3 the index could not be written
)",
    Outputs(", ", " or ", false));

const std::string kCommandHelp =
    R"(Usage: zkhost command NAME [ARGUMENTS] [OPTIONS]

Calls the plug-in's callback with the command NAME and prints what it returns.
Arguments that are left out are zero.

Example:
  zkhost command "Biovision Import function" str:walk.bvh bool:false bool:true

Arguments:
  str:TEXT                a text
  bool:true, bool:false   a boolean, 0xFFFF or 0
  word:N                  a 16-bit word as it is, decimal or 0x...
  real:X                  a number
Options:
  --json FILE             write the record of the run
  --progress auto|on|off  a bar to cancel by (auto: on a terminal)
  --plugin PATH           the plug-in to load
  -h, --help              this text
Exit status: 0 the callback returned 0, 1 it returned anything else,
  2 wrong usage, 3 the record could not be written, 130 cancelled
)";

}  // namespace cli
