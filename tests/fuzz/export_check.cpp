#include "tests/fuzz/export_check.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>

#include "acclaim/acclaim_import.h"
#include "bvh/biovision_import.h"
#include "export/bvh.h"
#include "export/csv.h"
#include "export/fbx.h"
#include "export/gltf.h"
#include "export/npz.h"
#include "export/options.h"
#include "export/page.h"
#include "export/svg.h"
#include "files/output_file.h"
#include "headless/session.h"
#include "tests/export/fbx_file.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"
#include "text/byte_sink.h"

namespace fuzz {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kHead = 2;  // bytes before the text
constexpr std::size_t kLongestInput = 3000;
// Motions with frame numbers farther apart, or with a later end, cost time and show nothing new.
constexpr double kLongestMotion = 2000.0;

struct Choices {
    bool nulls, chainFromParent, effectorToLastBone;
    exporters::Options options;

    Choices(char first, char second)
        : nulls((first & 1) != 0),
          chainFromParent((first & 2) != 0),
          effectorToLastBone((first & 4) != 0) {
        static constexpr double kScales[] = {1.0, 0.01, 1e-300, 1e300};
        options.scale = kScales[second & 3];
        if ((first & 8) != 0) options.up = exporters::UpAxis::Z;
        options.mesh = (first & 16) != 0;
        if ((second & 4) != 0) options.framesPerSecond = 30.0;
        if ((second & 8) != 0) options.resampleTo = 24.0;
        if ((second & 16) != 0) options.digits = 3;
        options.inPlace = (first & 32) != 0;
        options.allNodes = (first & 64) != 0;
        options.aim = (first & 128) != 0;
        if ((second & 32) != 0) options.compress = (second & 64) == 0;
        options.float32 = (second & 64) != 0;
        // A skeleton that hardly any scene fits.
        if ((second & 128) != 0)
            options.skeletons = {{{"Hips"}, {"Hips", 0}, {"Hips_End", 1, true}}};
    }
};

// The status is ignored, because the scene of a failed import is exported too.
void ImportBvh(std::string_view text, const Choices& choices) {
    const MemoryFile file(text);
    CBiovisionImport importer;
    importer.SetOptions(choices.nulls, choices.chainFromParent, choices.effectorToLastBone, true);
    importer.ImportBVH(file.Path().c_str(), L"probe");
}

void ImportPair(std::string_view texts, const Choices& choices) {
    const std::size_t separator = texts.find('~');
    const MemoryFile asf(texts.substr(0, separator));
    CAcclaimImport importer;
    importer.SetOptions(choices.nulls, choices.chainFromParent, choices.effectorToLastBone, true);
    if (!importer.ImportSkeleton(asf.Path().c_str(), L"probe").Succeeded()) return;
    if (separator == std::string_view::npos) return;
    const MemoryFile amc(texts.substr(separator + 1));
    importer.ImportMotion(amc.Path().c_str(), L"motion");
}

const headless::Scene& CurrentScene() {
    return headless::Session::Current().GetScene();
}

bool IsLong() {
    for (const headless::Object* model : CurrentScene().Models())
        for (const auto& action : model->modelData->actions) {
            if (action->animEnd > kLongestMotion) return true;
            for (const auto& item : action->items)
                if (item.IsCurve() && item.GetCurve().keys.Count() > 0) {
                    const auto [least, most] = std::minmax_element(
                        item.GetCurve().keys.times->begin(), item.GetCurve().keys.times->end());
                    if (!(*most - *least <= kLongestMotion)) return true;
                }
        }
    return false;
}

// A temporary folder, which is in memory if the system has /dev/shm.
const support::TemporaryFolder& Folder() {
    static const support::TemporaryFolder folder = [] {
        if (fs::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
        return support::TemporaryFolder();
    }();
    return folder;
}

std::size_t FilesLeft() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(Folder().Path()), fs::directory_iterator()));
}

class Exports {
  public:
    explicit Exports(const exporters::Options& options) : options_(options) {}

    void Run() {
        Write({"a.bvh"},
              [&](text::ByteSink& out) { exporters::WriteBvh(out, CurrentScene(), options_); });
        Write({"a.csv"},
              [&](text::ByteSink& out) { exporters::WriteCsv(out, CurrentScene(), options_); });
        Write({"a.npz"},
              [&](text::ByteSink& out) { exporters::WriteNpz(out, CurrentScene(), options_, {}); });
        Write({"a.html"}, [&](text::ByteSink& out) {
            if (!exporters::HasViewer()) throw exporters::ExportError("no viewer");
            const exporters::PageTake take =
                exporters::BuildPageTake(CurrentScene(), options_, nullptr);
            out.Write(take.record);
            out.Write(take.keys);
        });
        Write({"a.svg"},
              [&](text::ByteSink& out) { exporters::WriteSvg(out, CurrentScene(), options_, {}); });
        Write({"a.glb"},
              [&](text::ByteSink& out) { exporters::WriteGlb(out, CurrentScene(), options_); });
        Write({"a.fbx"},
              [&](text::ByteSink& out) { exporters::WriteFbx(out, CurrentScene(), options_); });
        Write({"a.gltf", "a.bin"}, [&](text::ByteSink& out) {
            files::OutputFile binary(Folder().Path("a.bin"));
            exporters::WriteGltf(out, binary, "a.bin", CurrentScene(), options_);
            binary.Commit();
        });
        RequireFormats();
    }

    std::optional<std::string> Bytes(const std::string& name) const {
        const auto found = written_.find(name);
        return found == written_.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    template <class Writer>
    void Write(std::initializer_list<const char*> names, const Writer& write) {
        bool refused = false;
        try {
            files::OutputFile file(Folder().Path(*names.begin()));
            write(file);
            file.Commit();
        } catch (const exporters::ExportError& error) {
            Require(*error.what() != '\0', "a refusal without a reason");
            refused = true;
        }
        Require(FilesLeft() == (refused ? 0 : names.size()), "files are left over or missing");
        for (const char* name : names) {
            const fs::path path = Folder().Path(name);
            if (refused) continue;
            std::ifstream stream(path, std::ios::binary);
            written_[name] = {std::istreambuf_iterator<char>(stream), {}};
            fs::remove(path);
        }
    }

    // The reader throws if anything in the file does not fit.
    static void RequireFbx(const std::string& bytes) {
        const exported::FbxFileReader fbx(bytes);
        for (const auto& [id, object] : fbx.Objects())
            Require(object.owner != -1 || object.kind == "AnimStack" || object.kind == "Pose",
                    "an object that belongs to none");
    }

    void RequireFormats() const {
        const auto glb = Bytes("a.glb");
        Require(!glb || (glb->starts_with("glTF") && glb->size() % 4 == 0), "no glTF file");
        const auto npz = Bytes("a.npz");
        Require(!npz || npz->starts_with("PK"), "no archive");
        const auto fbx = Bytes("a.fbx");
        if (fbx) RequireFbx(*fbx);
        const auto bvh = Bytes("a.bvh");
        Require(!bvh || bvh->empty() || bvh->starts_with("HIERARCHY"), "no BVH file");
        Require(glb.has_value() == Bytes("a.gltf").has_value(), "one glTF, but not the other");
    }

    const exporters::Options& options_;
    std::map<std::string, std::string> written_;
};

void RequireImportableBvh(const std::string& bytes, std::size_t models) {
    support::StartSession(false);
    const MemoryFile file(bytes);
    CBiovisionImport importer;
    importer.SetOptions(true, true, false, true);
    const bool succeeded = importer.ImportBVH(file.Path().c_str(), L"again").Succeeded();
    const std::string message = support::Utf8(importer.GetLastError(nullptr, nullptr));
    Require(succeeded, "an exported BVH is refused: " + message);
    Require(importer.GetModelsCount() == models, "an exported BVH has lost a model");
}

}  // namespace

void CheckExports(std::string_view input) {
    if (input.size() <= kHead || input.size() > kLongestInput) return;
    const Choices choices(input[0], input[1]);
    const std::string_view texts = input.substr(kHead);
    support::StartSession(false);
    if (texts[0] == ':')
        ImportPair(texts, choices);
    else
        ImportBvh(texts, choices);
    const std::size_t models = CurrentScene().Models().size();
    if (models == 0 || IsLong()) return;
    Exports exports(choices.options);
    exports.Run();
    const std::optional<std::string> bvh = exports.Bytes("a.bvh");
    if (bvh) RequireImportableBvh(*bvh, models);
    headless::Session::Current().Reset();
}

}  // namespace fuzz
