#include "library.hpp"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace plugin {
namespace {

// Windows takes no other path for that of a library that it has loaded already.
std::wstring full(char const* path) {
    return std::filesystem::absolute(path).make_preferred().wstring();
}

template <class Result>
Result checked(Result result, char const* about) {
    if (result == nullptr) {
        auto const error = static_cast<int>(GetLastError());
        throw std::runtime_error(std::string(about) + ": " + std::system_category().message(error));
    }
    return result;
}

}  // namespace

library::library(char const* path, names /*found*/) : handle_(checked(LoadLibraryW(full(path).c_str()), path)) {}

library::~library() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* library::find(char const* name) const {
    return reinterpret_cast<void*>(checked(GetProcAddress(static_cast<HMODULE>(handle_), name), name));
}

bool library::is_loaded(char const* path) {
    return GetModuleHandleW(full(path).c_str()) != nullptr;
}

}  // namespace plugin
