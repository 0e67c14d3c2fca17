// Imports a BVH file as any host would: it loads the plug-in, passes it an argument array and reads
// the log and the scene. Prints the number of objects and the last log line. If the import fails,
// the exit status is 1 and the error is on stderr.
#include <clocale>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <dlfcn.h>
#include <langinfo.h>
#include <string>
#include <string_view>

#include "headless/session.h"
#include "host/variant.h"
#include "plugin/contract.h"

namespace {

// The plug-in converts the names in a file to wide text with the character locale, which a program
// must choose itself. File names are UTF-8, whatever the user's locale is.
void UseUtf8() {
    std::setlocale(LC_CTYPE, "");
    const bool isUtf8 = std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
    if (!isUtf8 && std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) std::setlocale(LC_CTYPE, "C");
}

// The path as wide text. A byte that belongs to no UTF-8 character becomes 0xDC00 + byte, which the
// plug-in converts back to that byte when it opens the file.
std::wstring WidePath(std::string_view bytes) {
    std::wstring path;
    while (!bytes.empty()) {
        wchar_t character = 0;
        std::mbstate_t state{};
        std::size_t length = std::mbrtowc(&character, bytes.data(), bytes.size(), &state);
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (length > bytes.size() || isSurrogate) {  // (size_t)-1 and -2 are failures
            character = 0xDC00 + static_cast<unsigned char>(bytes.front());
            length = 1;
        }
        path += character;
        bytes.remove_prefix(length);
    }
    return path;
}

// The callback returns 0 for failed imports, too, so only the log tells whether there were errors.
bool ReportErrors(const headless::Session& session) {
    bool failed = false;
    for (const headless::LogLine& line : session.Log()) {
        const wchar_t* const text = line.text.GetWideString();
        if (!plugin::IsErrorLine(line.severity, text)) continue;
        std::fprintf(stderr, "%ls\n", text);
        failed = true;
    }
    return failed;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    UseUtf8();
    void* const library = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    const auto command =
        reinterpret_cast<plugin::Callback>(dlsym(library, plugin::kCallbackSymbol));
    const auto* const input =
        static_cast<const USERINPUT*>(dlsym(library, plugin::kUserInputSymbol));
    if (command == nullptr || input == nullptr) return 1;

    using namespace plugin::biovision;
    const std::wstring path = WidePath(argv[1]);
    VARIANT arguments[kArgumentCount] = {};
    arguments[kFile].vt = plugin::kTextType;
    arguments[kFile].bstrVal = path.c_str();
    for (const Argument flag :
         {kAddClip, kUseNulls, kChainFromParentJoint, kEffectorToLastBone, kCreateGroup}) {
        arguments[flag].vt = plugin::kBooleanType;
        arguments[flag].boolVal = plugin::BooleanWord(flag == kUseNulls);
    }
    if (command(plugin::kBiovisionCommand, arguments) != 0 || !input->bUseNulls) return 1;

    const headless::Session& session = headless::Session::Current();
    if (ReportErrors(session)) return 1;
    std::printf("%zu objects\n%ls\n", session.GetScene().Objects().size(),
                session.Log().back().text.GetWideString());
    return 0;
}
