// Uses the library before and after the program's own time: from the constructor and from the destructor of a static
// object. What goes wrong ends the process with SIGABRT.

#include "support/counting_object.hpp"
#include "support/failure.hpp"
#include "support/node.hpp"
#include "support/samples.hpp"

#include <boost/config.hpp>
#include <boost/preprocessor/stringize.hpp>

#include <cstdlib>
#include <optional>
#include <sstream>

/// A name by which a program is linked with this library, on systems where it isn't without.
extern "C" BOOST_SYMBOL_EXPORT char const* RESIDENT() {
    return BOOST_PP_STRINGIZE(RESIDENT);
}

namespace {

using namespace support;

std::string const own_name = std::string("a name of ") + RESIDENT();

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// A bit of everything that has a table or a static object behind it.
class use_of_the_library {
public:
    use_of_the_library() : name_(own_name), factory_(node_factory()) {
        std::stringstream stream;
        velum::uany_map values;
        for (sample const& row : samples()) {
            values[own_name + std::to_string(values.size())] = row.value;
        }
        writer_on(stream)->write_object(stored_form(velum::uany_map_obj_t::create(values)));
        reader_on(stream, factory_)->read_object(read_);
        require(map().size() == values.size());
        for (auto const& [key, value] : values) {
            require(velum::type_key(value.type()) == velum::type_key(map().at(key).type()));
        }
        require(failure_of([&] { factory_->class_info(velum::iid_unknown); }).find("not registered") !=
                std::string::npos);
    }

    ~use_of_the_library() {
        require(name_ == velum::ustring(own_name) && references(read_) == 1);
        require(!map().empty() && !velum::any_compare(map().begin()->second, map().begin()->second));
    }

private:
    velum::uany_map const& map() const { return velum::iptr<velum::i_uany_map_t>(read_, velum::iid_uany_map)->map(); }

    velum::ustring name_;
    object_factory factory_;
    serializable read_;
};

struct resident {
    ~resident() { use_of_the_library(); }

    /// Without it the destructor is the first to make use of the library.
    std::optional<use_of_the_library> from_the_start;
};

resident here{RESIDENT_FROM_THE_START ? std::optional<use_of_the_library>(std::in_place) : std::nullopt};

}  // namespace
