// Reads a BVH file and writes it as binary glTF: bvh_to_gltf walk.bvh walk.glb
#include <cstdio>

#include "export/formats.h"
#include "files/system_storage.h"
#include "files/write_file.h"
#include "take/import.h"

int Fail(const std::string& problem) {
    std::fprintf(stderr, "%s\n", problem.c_str());
    return 1;
}

int main(int argc, char** argv) {
    if (argc != 3) return Fail("usage: bvh_to_gltf FILE.bvh FILE.glb");
    const take::LoadedPlugin loaded = take::LoadPlugin();
    if (!loaded.plugin) return Fail(loaded.problem);

    take::Request request;
    request.file.path = argv[1];
    files::SystemStorage storage;
    const take::Result result = take::Import(*loaded.plugin, request, storage);
    if (!result.IsImported()) return Fail(result.FirstError());

    const exporters::Options options = {.scale = 1.0 / result.multiplied,
                                        .framesPerSecond = result.framesPerSecond,
                                        .models = result.outcome.models};
    const exporters::Content content = {result.Scene(), options};
    exporters::Notes notes;
    const auto fill = [&](text::ByteSink& out) {
        return exporters::Write(*exporters::FindFormat(".glb"), content, {out}, notes);
    };
    const files::WriteOutcome written = files::WriteFile(argv[2], fill);
    return written.IsWritten() ? 0 : Fail(written.problem);
}
