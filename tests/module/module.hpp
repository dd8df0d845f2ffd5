#pragma once

#include <velum/velum.hpp>

#include <type_traits>
#include <vector>

/// Throws and catches the library's exceptions where it is compiled, which is in the program and in the module.
template <class... Errors>
struct exceptions {
    using thrower = void (*)(int);

    static void throw_one(int which) { ((which-- == 0 ? throw made<Errors>() : void()), ...); }

    static bool all_caught(thrower throws) {
        int which = 0, caught = 0;
        auto const count = [&]<class Error>(Error const*) {
            try {
                throws(which++);
            } catch (Error const&) {
                ++caught;
            }
        };
        (count(static_cast<Errors const*>(nullptr)), ...);
        return caught == sizeof...(Errors);
    }

private:
    template <class Error>
    static Error made() {
        if constexpr (std::is_default_constructible_v<Error>) {
            return Error();
        } else {
            return Error("text");
        }
    }
};

using library_exceptions =
    exceptions<velum::key_not_found, velum::unknown_type, velum::i_object_factory_t::class_not_registered,
               velum::i_object_factory_t::class_already_registered, velum::length_exceeds_stream>;

/// What a program and a module that it loads hand each other.
struct meeting {
    velum::iptr<velum::i_object_factory_t> factory;
    library_exceptions::thrower host_throws = &library_exceptions::throw_one, module_throws = nullptr;
    bool module_caught = false;
    std::vector<velum::ustring> texts;
    velum::ustring own_type;  ///< of the module alone
    std::vector<boost::any> values;
    velum::iptr<velum::i_unknown_t> aggregate;
};

using visit_t = void(meeting&);
