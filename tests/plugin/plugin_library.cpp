#include "tests/plugin/plugin_library.h"

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

namespace plugin_test {

namespace {

using Callback = std::int32_t (*)(const wchar_t*, const VARIANT*);

struct Library {
    Callback callback = nullptr;
    USERINPUT* input = nullptr;

    Library() {
        void* const handle = dlopen(ZKMOCAP_PLUGIN, RTLD_NOW | RTLD_LOCAL);
        if (handle == nullptr) throw std::runtime_error(dlerror());
        callback = reinterpret_cast<Callback>(dlsym(handle, "ZelkOnCommand"));
        input = static_cast<USERINPUT*>(dlsym(handle, "g_UserInput"));
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

Arguments& Arguments::Text(std::size_t place, const std::wstring& text) {
    texts_[place] = std::make_shared<const std::wstring>(text);
    records_[place].bstrVal = texts_[place]->c_str();
    return *this;
}

Arguments& Arguments::NullText(std::size_t place) {
    records_[place].bstrVal = nullptr;
    return *this;
}

Arguments& Arguments::Word(std::size_t place, std::uint16_t word) {
    std::memcpy(&records_[place].boolVal, &word, sizeof(word));
    return *this;
}

Arguments& Arguments::Real(std::size_t place, double value) {
    records_[place].dblVal = value;
    return *this;
}

Arguments Biovision(const std::wstring& path) {
    Arguments arguments;
    arguments.Text(0, path).Word(1, 0).Word(2, kTrue).Word(3, 0).Word(4, 0).Word(5, 0);
    return arguments;
}

Arguments Acclaim(const std::wstring& asf, const std::wstring& amc) {
    Arguments arguments;
    arguments.Text(0, asf).Text(1, amc).Word(2, 0).Word(3, 0).Real(4, 1.0);
    for (std::size_t place = 5; place < 10; ++place)
        arguments.Word(place, 0);
    return arguments;
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
