#pragma once

#include <stdexcept>

namespace scene {

/// Throws `std::runtime_error` with the text `otherwise` unless `held`.
inline void require(bool held, char const* otherwise) {
    if (!held) {
        throw std::runtime_error(otherwise);
    }
}

}  // namespace scene
