#include "module/module.hpp"

#include "library.hpp"
#include "support/counting_object.hpp"
#include "support/heap.hpp"
#include "support/node.hpp"
#include "support/samples.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <tuple>

namespace {

using namespace support;

using names = plugin::library::names;

/// A module, loaded for as long as this lives.
class module : plugin::library {
public:
    using library::library;

    meeting meet() const {
        meeting with;
        with.factory = new_factory();
        reinterpret_cast<visit_t*>(find("visit"))(with);
        return with;
    }
};

char const* const paths[] = {VELUM_TEST_MODULE_HIDDEN, VELUM_TEST_MODULE_VISIBLE};

class modules : public testing::TestWithParam<std::tuple<char const*, names>> {
protected:
    module const loaded_{std::get<0>(GetParam()), std::get<1>(GetParam())};
};
std::string way_name(testing::TestParamInfo<std::tuple<char const*, names>> const& info) {
    auto const [path, mode] = info.param;
    return std::string(path == paths[0] ? "hidden" : "visible") + (mode == names::own ? "_local" : "_global");
}
INSTANTIATE_TEST_SUITE_P(loaded, modules,
                         testing::Combine(testing::ValuesIn(paths), testing::Values(names::own, names::of_all)),
                         way_name);

TEST_P(modules, have_the_same_texts_types_and_exceptions) {
    meeting const with = loaded_.meet();
    auto const own = samples();
    for (std::size_t i = 0; i < own.size(); ++i) {
        EXPECT_EQ(velum::type_key(own[i].value.type()), with.texts.at(i));
        EXPECT_EQ(boost::typeindex::type_index(own[i].value.type()), with.values.at(i).type());
        std::ostringstream stream;
        velum::write(writer_on(stream), velum::any_map{{"k", with.values[i]}});
        EXPECT_EQ(stream.str(), body_of("k", own[i].tag, own[i].payload));
    }
    EXPECT_EQ(boost::any_cast<std::string>(with.values.at(0)), "");
    EXPECT_EQ(with.texts.back(), velum::ustring("a text of both"));
    EXPECT_TRUE(library_exceptions::all_caught(with.module_throws) && with.module_caught);
}

TEST_P(modules, make_objects_that_the_host_stores_reads_and_releases) {
    meeting with = loaded_.meet();
    serializable made, back;
    EXPECT_TRUE(with.factory->create_object(node::id, {}, {}, velum::iid_serializable, &made));
    std::stringstream stream;
    writer_on(stream)->write_object(made);
    EXPECT_EQ(stream.str(), u32(2) + u32(0) + stored(node::id) + u32(4) + "made" + u32(0) + u32(0));
    EXPECT_TRUE(reader_on(stream, with.factory)->read_object(back) && back != made && back->clsid() == node::id);
    EXPECT_EQ(text_in(with.aggregate), "part");
    EXPECT_EQ(identity_of(velum::iptr<velum::i_string_t>(with.aggregate, velum::iid_string)), with.aggregate);
    EXPECT_TRUE(references(with.aggregate) == 1 && references(made) == 1 && references(back) == 1);
}

// What the host has from a module goes before the module does; what it has from the library stays, whatever came with
// the module.
TEST(module, comes_and_goes_a_thousand_times) {
    velum::ustring const text("a text of both");
    object_factory const factory = new_factory();
    serializable const boxed = boxed_text("kept");
    std::optional<heap_watch> heap;
    for (int i = 0; i < 1000; ++i) {
        char const* const path = paths[i % 2];
        {
            module const loaded(path);
            meeting const with = loaded.meet();
            ASSERT_EQ(with.texts.back(), text);
            ASSERT_EQ(with.own_type.string(), i % 2 == 0 ? "of_a_module<0>" : "of_a_module<1>");
            ASSERT_EQ(with.factory->registered_classes().count(node::id), 1U);
        }
        ASSERT_FALSE(plugin::library::is_loaded(path)) << "it stays";
        i == 10 ? void(heap.emplace()) : void();
    }
    EXPECT_LE(heap->change(), 0);
    EXPECT_TRUE(text == velum::ustring("a text of both") && text.string() == "a text of both");
    EXPECT_TRUE(text_in(boxed) == "kept" && references(boxed) == 1 && factory->registered_classes().size() == 3);
}

}  // namespace
