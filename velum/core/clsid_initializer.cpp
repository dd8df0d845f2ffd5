#include <velum/core/clsid_initializer.hpp>
#include <velum/core/detail/class_ids.hpp>

namespace velum {
namespace {

// All of this is constant-initialised: an instance in any source file may run first and find it ready.
constinit int instances = 0;
constinit guid_t ids[7];

}  // namespace

namespace detail {

constinit guid_t const& clsid_1 = ids[0];
constinit guid_t const& clsid_2 = ids[1];
constinit guid_t const& clsid_3 = ids[2];
constinit guid_t const& clsid_4 = ids[3];
constinit guid_t const& clsid_basic_string = ids[4];
constinit guid_t const& clsid_basic_unknown_map = ids[5];
constinit guid_t const& clsid_uany_map_obj = ids[6];

}  // namespace detail

clsid_initializer_t::clsid_initializer_t() {
    if (instances++ != 0) {
        return;
    }
    ids[0] = guid_t("{BFE2FAE0-7E57-4ad7-B8DB-2EC2147871C3}");
    ids[1] = guid_t("{9D58181B-F68E-4f62-9879-725725E60D4B}");
    ids[2] = guid_t("{1EF42B48-0596-488f-91DC-236D53BA5794}");
    ids[3] = guid_t("{9697A053-DE50-417b-855F-6173B37051DA}");
    ids[4] = guid_t("{43D4FF6A-038F-4d67-B193-8D21B14DA8BC}");
    ids[5] = guid_t("{AD409247-FD65-4d5a-BC6B-90A224C55AEE}");
    ids[6] = guid_t("{2D4AF8B5-DD75-43FC-A053-411A316F2C99}");
}

// A copy is an instance like any other and is counted, or its destructor would upset the count.
clsid_initializer_t::clsid_initializer_t(clsid_initializer_t const&) : clsid_initializer_t() {}

clsid_initializer_t& clsid_initializer_t::operator=(clsid_initializer_t const&) = default;

clsid_initializer_t::~clsid_initializer_t() {
    --instances;
}

}  // namespace velum
