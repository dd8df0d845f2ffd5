// Another module of a program: it has its own copy of all that is inline, and shows nothing of it but one function.

#include "module/module.hpp"
#include "support/node.hpp"
#include "support/panel.hpp"
#include "support/samples.hpp"

#include <boost/config.hpp>

template <int>
struct of_a_module {};

extern "C" BOOST_SYMBOL_EXPORT void visit(meeting& with) {
    with.module_caught = library_exceptions::all_caught(with.host_throws);
    with.module_throws = &library_exceptions::throw_one;
    for (support::sample const& each : support::samples()) {
        with.values.push_back(each.value);
        with.texts.push_back(velum::type_key(each.value.type()));
    }
    with.texts.emplace_back("a text of both");
    with.own_type = velum::type_key(typeid(of_a_module<VELUM_MODULE_NUMBER>));
    with.aggregate = support::panel_t::make();
    auto const create = [](auto const&, auto const&, velum::guid_t const& iid, void* out) {
        return velum::iptr<support::node>(new support::node("made"))->query_interface(iid, out);
    };
    with.factory->register_class(support::node::id, create, {}, &support::node::rebuild, {});
}
