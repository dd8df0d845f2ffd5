#include "library.hpp"

#include <stdexcept>

#include <dlfcn.h>

namespace plugin {
namespace {

void* checked(void* result) {
    if (result == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return result;
}

}  // namespace

library::library(char const* path, names found)
    : handle_(checked(dlopen(path, RTLD_NOW | (found == names::of_all ? RTLD_GLOBAL : RTLD_LOCAL)))) {}

library::~library() {
    dlclose(handle_);
}

void* library::find(char const* name) const {
    return checked(dlsym(handle_, name));
}

bool library::is_loaded(char const* path) {
    void* const found = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    return found != nullptr && dlclose(found) == 0;
}

}  // namespace plugin
