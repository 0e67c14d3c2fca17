#include "cli/help_text.h"

#include <cstddef>
#include <fmt/format.h>
#include <span>
#include <string_view>
#include <utility>

#include "export/formats.h"
#include "take/commands.h"
#include "text/wide_text.h"

namespace cli {
namespace {

// Returns a list of the output formats' extensions. `last` is put between the last two extensions,
// and `separator` between all others. If `withDot` is true, each extension begins with a dot.
std::string Outputs(std::string_view separator, std::string_view last, bool withDot) {
    const std::span<const exporters::Format> formats = exporters::Formats();
    std::string list;
    for (std::size_t index = 0; index < formats.size(); ++index) {
        if (index > 0) list += index + 1 < formats.size() ? separator : last;
        list += formats[index].extension.substr(withDot ? 0 : 1);
    }
    return list;
}

std::string WithReplaced(std::string text, std::string_view mark, const std::string& list) {
    return text.replace(text.find(mark), mark.size(), list);
}

// Returns `text` with "@outputs@" replaced by `list`.
std::string WithOutputs(std::string text, const std::string& list) {
    return WithReplaced(std::move(text), "@outputs@", list);
}

std::string_view StartOf(take::ArgumentKind kind) {
    switch (kind) {
        case take::ArgumentKind::Text:
            return "str:";
        case take::ArgumentKind::Real:
            return "real:";
        case take::ArgumentKind::Boolean:
            break;
    }
    return "bool:";
}

// Returns a line for each command of the plug-in, and below it a line for each of its arguments.
std::string Commands() {
    std::string lines;
    for (const take::FormatInfo& format : take::Formats()) {
        lines += fmt::format("  \"{}\"\n", text::EncodeUtf8(format.command));
        for (const take::ArgumentInfo& argument : format.arguments)
            lines += fmt::format("    {:<6}{}\n", StartOf(argument.kind), argument.meaning);
    }
    return lines;
}

// Returns `text` with "@commands@" replaced by `list`.
std::string WithCommands(std::string text, const std::string& list) {
    return WithReplaced(std::move(text), "@commands@", list);
}

}  // namespace

const std::string kMainHelp =
    R"(zkhost - imports motion capture files with the plug-in, without a window

Usage:
  zkhost import FILE.bvh [OPTIONS]                  import a BVH file
  zkhost import SKEL.asf [MOTION.amc] [OPTIONS]     import Acclaim files
  zkhost view FILE... [OPTIONS]                     show takes in a browser
  zkhost check FILE... [OPTIONS]                    report problems in files
  zkhost convert PATH... --to FORMAT --out-dir DIR  convert a whole data set
  zkhost command NAME [ARGUMENTS]                   call the plug-in's callback

Example:
  zkhost import walk.bvh --tree -o walk.json

Options:
  -h, --help     print this text or, after a command, the help of that command
  --help-all     after a command: all of its options
  --version      print the version

Exit status:
  0    imported                        4    view, convert: some files failed
  1    failed or refused               5    imported in part, then an error
  2    wrong usage, or no plug-in      130  cancelled
  3    an output could not be written
)";

const std::string kImportHelp = WithOutputs(
    R"(Usage: zkhost import FILE.bvh | SKEL.asf [MOTION.amc]  [OPTIONS]
Example: zkhost import 07.asf 07_01.amc --tree -o walk.glb

  -o, --output FILE       write FILE; may repeat; the extension is the format:
                          @outputs@
  --tree                  print the scene: names, types, positions at rest
  --quiet                 print no summary, only errors and warnings
Reading:
  --nulls, --bones        build nulls (default) or chains of bones
  --fps N                 the take's rate, instead of the one that the file has
  --preset auto|cmu|none  Acclaim: cmu: metres, 120 fps (auto: if length 0.45)
  --as bvh|asf|amc        what the file - (standard input) is; also FILE.gz
  --strict, --as-is       refuse files that have warnings; skip the survey
  --encoding NAME         encoding of names that are not UTF-8 (Windows-1252)
Writing:
  --scale X, --up x|y|z   multiply lengths by X; the capture's up axis (y)
  --frames A:B            only the frames from A to B, as the file counts them
  --resample [N]          N samples a second, or as many as --fps says
  --in-place              keep the root where it is on the ground
  --no-mesh               glTF, FBX: no body of simple shapes
  --make-folders          create the folders of the outputs
  --no-clobber            stop if an output exists already
Help:
  -h, --help              print this text
  --help-all              print all options
)",
    Outputs(" ", " ", true));

const std::string kImportAllHelp = WithOutputs(
    R"(Usage: zkhost import FILE.bvh | SKEL.asf [MOTION.amc]  [OPTIONS]
Example: zkhost import 07.asf 07_01.amc --preset cmu --bones -o walk.glb

Building the skeleton:
  --nulls, --bones          build nulls (default) or chains of bones
  --[no-]chain-from-parent  start a chain at its parent joint (default: on)
  --effector-to-last-bone   put a chain's effector under its last bone
  --[no-]group              put the moving objects in a group (default: on)
  --clip                    add a clip of the motion
Reading:
  --fps N                   the take's rate, instead of the one in the file
  --preset auto|cmu|none    Acclaim: cmu: metres, 120 fps; auto: if length 0.45
  --limits                  Acclaim: clamp values to the limits of the skeleton
  --length X                Acclaim: multiply lengths by X, not the file's own
  --as bvh|asf|amc          what the file - (standard input) is; files may also
                            be packed by gzip (walk.bvh.gz)
  --as-is                   let the plug-in read the files without the survey
  --strict                  refuse files that have warnings
  --encoding NAME           encoding of names that are not UTF-8 (Windows-1252)
Outputs:
  -o, --output FILE         write FILE; may repeat; the extension chooses:
                            @outputs@
  --csv-names FILE          write a table of the columns of the .csv too
  --make-folders            create the folders of the outputs
  --no-clobber              import nothing if an output exists already
  --provenance              store check sums of the sources in the outputs
Options of outputs; one that no output honours is an error:
  --scale X                 multiply lengths by X, in the tree too
  --up x|y|z                the axis that points up in the capture (y)
  --frames A:B              only the frames from A to B, both included, as the
                            file counts them; A: and :B leave an end open
  --resample [N]            N samples a second, or as many as --fps says; the
                            take then keeps the rate of its file
  --in-place                keep the root where it is on the ground
  --all-nodes               all objects of the scene, not only joints
  --[no-]mesh               glTF, FBX: a body of simple shapes (default: on)
  --aim                     glTF: turn joints so that y runs along the bone
  --animations WHICH        glTF: one for all models (merged, the default) or
                            one for each (per-model)
  --digits N                BVH: decimal places
  --float32                 NPZ: 32-bit numbers
  --[no-]compress           NPZ, FBX: compressed arrays (default: only FBX)
What is printed:
  --tree                    print the scene: names, types, positions at rest
  --quiet                   print no summary, only errors and warnings
  --timing                  print load_ms=..., and write_ms=... for each output
  --progress auto|on|off    use a progress bar (auto: on a terminal)
Other:
  --threads N               use N threads (default: one per processor)
  --plugin PATH             load this plug-in
  -h, --help, --help-all    print the options for every day, or this text
)",
    Outputs(" ", " ", true));

const std::string kViewHelp =
    R"(Usage: zkhost view FILE...  [OPTIONS]
Example: zkhost view walk.bvh        zkhost view 07.asf 07_01.amc 07_02.amc

Imports the takes, makes a page that shows them together, prints the page's
path and opens it in your browser. An .asf file is the skeleton of the .amc
files after it; without one, it is looked for in the folder of the .amc file.
Pages in ~/.cache/zkhost/view, which only you can read, are removed after a
day. To keep a page, write it: zkhost import walk.bvh -o walk.html

  --no-open                 only print the path of the page
  --quiet                   print only errors and warnings
Reading:
  --nulls, --bones          build nulls (default) or chains of bones
  --fps N                   the take's rate, instead of the one in the file
  --preset auto|cmu|none    Acclaim: cmu: metres, 120 fps; auto: if length 0.45
  --as bvh|asf|amc          what the file - (standard input) is
  --threads N               use N threads (default: one per processor)
  --strict, --as-is         refuse files that have warnings; skip the survey
  --encoding NAME           encoding of names that are not UTF-8 (Windows-1252)
Showing:
  --scale X, --up x|y|z     multiply lengths by X; the capture's up axis (y)
  --frames A:B              only frames A to B, as the file counts them
  --resample [N]            N samples a second, or as many as --fps says
  --in-place                keep the root where it is on the ground
  --all-nodes               show all objects of the scene, not only the joints
  --provenance              show the check sums of the files
)";

const std::string kCheckHelp =
    R"(Usage: zkhost check FILE...  [OPTIONS]
Example: zkhost check takes/*.bvh

Reports problems in .bvh, .asf and .amc files without importing them, and what
they contain: joints, frames, rate, height, likely unit and up axis. An .asf is
checked together with the .amc files after it. Each finding is one line:
  FILE:LINE:COLUMN: SEVERITY: MESSAGE [CODE]
  error    'zkhost import' refuses the file
  warning  something was lost or guessed, or is probably a mistake
  note     worth knowing; nothing is lost
  --as bvh|asf|amc   what the file - is, which is the standard input; any file
                     may be packed by gzip (walk.bvh.gz)
  --json             print a JSON object for each file, on one line
  --fix              write each file in a form that every reader accepts;
                     a file with an error is not written
    -o, --output OUT    the path to write to, for one file
    --out-dir DIR       the folder to write to; the files keep their names
  --strict           exit status 1 for a warning too
  --encoding NAME    encoding of names that are not UTF-8 (Windows-1252)
  -h, --help         print this text
Exit status: 0 no errors, 1 a file has an error, 2 wrong usage,
  3 a fixed file could not be written
)";

const std::string kConvertHelp = WithOutputs(
    R"(Usage: zkhost convert PATH... --to FORMAT[,...] --out-dir DIR  [OPTIONS]
Example: zkhost convert takes/ --to glb,npz --out-dir out

Imports each .bvh, .asf and .amc file in its own process; writes DIR/index.csv.
Folders are searched; outputs get the same subfolders. An .amc is imported with
the .asf file in its folder whose name begins the motion's name (07.asf and
07_01.amc), or with the only .asf file there. Files may be packed by gzip.
  --to FORMAT[,...]  @outputs@
  --out-dir DIR      the folder of the outputs, named after the sources
  --asf FILE         use this skeleton for every .amc
  -j, --jobs N       run N imports at a time (default: one per processor)
  --time-limit X     stop an import after X seconds (default: 600; 0: never)
  --resume           skip sources whose outputs all exist and are newer
  --no-clobber       keep each output that exists; its import fails
  --plan             print the command line of each import; run nothing
  --timing           print load and write times of all imports, and files/s
  --plugin PATH      load this plug-in
Options for each import, as in 'zkhost import --help-all':
  --nulls --bones --[no-]chain-from-parent --effector-to-last-bone --[no-]group
  --clip --as-is --strict --encoding NAME --scale X --up x|y|z --fps N
  --resample [N] --frames A:B --in-place --all-nodes --[no-]mesh --aim
  --animations merged|per-model --digits N --float32 --[no-]compress
  --provenance; for Acclaim files: --limits --length X --preset auto|cmu|none
Exit status: 0 all converted, 4 some failed, 2 wrong usage, 3 the disk is full
  or the index could not be written, 130 cancelled (--resume continues)
)",
    Outputs(", ", " or ", false));

const std::string kCommandHelp = WithCommands(
    R"(Usage: zkhost command NAME [ARGUMENTS] [OPTIONS]

Calls the plug-in's callback with the command NAME and prints its result.
Missing arguments are zero.

Example:
  zkhost command "Biovision Import function" str:walk.bvh bool:false bool:true

Arguments:
  str:TEXT                a text
  bool:true, bool:false   a boolean, 0xFFFF or 0
  word:N                  a 16-bit number, decimal or 0x...
  real:X                  a number
Commands, with their arguments in order:
@commands@Options:
  --json FILE             write a JSON record of the run
  --progress auto|on|off  use a progress bar (auto: on a terminal)
  --threads N             import on N threads (default: one per processor)
  --plugin PATH           load this plug-in
  -h, --help              print this text
Exit status: 0 the callback returned 0, 1 it returned another number,
  2 wrong usage, 3 the record could not be written, 130 cancelled
)",
    Commands());

}  // namespace cli
