// The entry of libFuzzer, for the target VELUM_FUZZ_TARGET.

#include "checks.hpp"
#include "targets.hpp"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static fuzz::target const* const target = fuzz::find_target(VELUM_FUZZ_TARGET);
    fuzz::require(target != nullptr, "there is no such target");
    fuzz::tolerated = std::size_t{16} << 20U;
    target->run({reinterpret_cast<char const*>(data), size});
    return 0;
}
