#include "tests/plugin/plugin_library.h"

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

namespace plugin_test {

namespace {

struct Library {
    plugin::Callback callback = nullptr;
    USERINPUT* input = nullptr;

    Library() {
        void* const handle = dlopen(ZKMOCAP_PLUGIN, RTLD_NOW | RTLD_LOCAL);
        if (handle == nullptr) throw std::runtime_error(dlerror());
        callback = reinterpret_cast<plugin::Callback>(dlsym(handle, plugin::kCallbackSymbol));
        input = static_cast<USERINPUT*>(dlsym(handle, plugin::kUserInputSymbol));
        if (callback == nullptr || input == nullptr)
            throw std::runtime_error("exports are missing");
    }
};

const Library& Loaded() {
    static const Library library;
    return library;
}

}  // namespace

Arguments::Arguments() {
    std::memset(static_cast<void*>(records_.data()), 0xA5, sizeof(records_));
}

Arguments& Arguments::Text(std::size_t index, const std::wstring& text) {
    texts_[index] = std::make_shared<const std::wstring>(text);
    records_[index].bstrVal = texts_[index]->c_str();
    return *this;
}

Arguments& Arguments::NullText(std::size_t index) {
    records_[index].bstrVal = nullptr;
    return *this;
}

Arguments& Arguments::Word(std::size_t index, std::uint16_t word) {
    std::memcpy(&records_[index].boolVal, &word, sizeof(word));
    return *this;
}

Arguments& Arguments::Real(std::size_t index, double value) {
    records_[index].dblVal = value;
    return *this;
}

Arguments Biovision(const std::wstring& path) {
    using namespace plugin::biovision;
    Arguments arguments;
    for (std::size_t index = 0; index < kArgumentCount; ++index)
        arguments.Word(index, plugin::kFalse);
    return arguments.Text(kFile, path).Word(kUseNulls, plugin::kTrue);
}

Arguments Acclaim(const std::wstring& asf, const std::wstring& amc) {
    using namespace plugin::acclaim;
    Arguments arguments;
    for (std::size_t index = 0; index < kArgumentCount; ++index)
        arguments.Word(index, plugin::kFalse);
    return arguments.Text(kSkeletonFile, asf).Text(kMotionFile, amc).Real(kLengthMultiplier, 1.0);
}

std::uint32_t Call(const wchar_t* command, const VARIANT* arguments) {
    return static_cast<std::uint32_t>(Loaded().callback(command, arguments));
}

std::uint32_t Call(const wchar_t* command, const Arguments& arguments) {
    return Call(command, arguments.Get());
}

const USERINPUT& Input() {
    return *Loaded().input;
}

std::wstring Wide(const std::string& text) {
    return std::wstring(text.begin(), text.end());
}

}  // namespace plugin_test
