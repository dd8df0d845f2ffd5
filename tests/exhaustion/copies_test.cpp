#include "exhaustion/scenario.hpp"
#include "support/copied_classes.hpp"

#include <optional>

namespace {

using namespace support;

/// The controlling unknown of objects that aren't on the heap.
class immortal : public velum::i_unknown_t {
    bool query_interface(velum::guid_t const&, void*) override { return false; }
    std::int32_t add_ref() override { return 2; }
    std::int32_t release() override { return 1; }
};
immortal control;

template <class Object>
struct copying {
    Object source, target;
    std::optional<Object> made = {};
};

// A copy that fails leaves the source as it was, and the target too or without content.
TEST(memory, that_runs_out_leaves_copies_as_they_were) {
    auto const check = [](auto make, auto fill, auto content, std::string const& moved) {
        using object = decltype(make(nullptr));
        auto const prepare = [=] {
            copying<object> c{make(&control), make(&control)};
            fill(c.source);
            return c;
        };
        auto model = prepare();
        std::string const full = content(model.source), other = content(model.target);
        run_out(
            prepare, [](auto& c) { c.made.emplace(object(c.source)); },
            [=](auto& c, bool done) {
                return content(c.source) == full && (done ? content(*c.made) == full : !c.made);
            });
        run_out(
            prepare, [](auto& c) { c.target = std::as_const(c.source); },
            [=](auto& c, bool done) {
                std::string const now = content(c.target);
                return content(c.source) == full && (done ? now == full : now == other || now == moved);
            });
    };
    for_each_copied_class(graph.objects[1], check);
}

}  // namespace
