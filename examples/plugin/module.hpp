#pragma once

#include "plugin.hpp"

#include <stdexcept>

#include <dlfcn.h>

namespace plugin {

/// A module that is loaded for as long as this lives. It must outlive whatever has functions of the module: the
/// factories with its classes, their objects, the values that these gave out, and what they throw.
class module {
public:
    /// Throws `std::runtime_error`.
    explicit module(char const* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        if (handle_ == nullptr) {
            throw std::runtime_error(dlerror());
        }
    }
    module(module const&) = delete;
    module& operator=(module const&) = delete;
    ~module() { dlclose(handle_); }

    /// Throws `std::runtime_error` when the module has no `register_classes`.
    void register_in(velum::i_object_factory_t& factory) const {
        void* const found = dlsym(handle_, "register_classes");
        if (found == nullptr) {
            throw std::runtime_error(dlerror());
        }
        reinterpret_cast<decltype(&register_classes)>(found)(factory);
    }

    /// Whether anybody has it loaded.
    static bool is_loaded(char const* path) {
        void* const found = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
        return found != nullptr && dlclose(found) == 0;
    }

private:
    void* handle_;
};

}  // namespace plugin
