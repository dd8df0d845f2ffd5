#include "module/module.hpp"

#include "support/counting_object.hpp"
#include "support/node.hpp"
#include "support/samples.hpp"

#include <gtest/gtest.h>

#include <sstream>

#include <dlfcn.h>

namespace {

using namespace support;

// The module stays: keys of its types are in the library's tables.
meeting met() {
    meeting with;
    with.factory = new_factory();
    void* const module = dlopen(VELUM_TEST_MODULE, RTLD_NOW | RTLD_LOCAL);
    auto* const visit = module == nullptr ? nullptr : reinterpret_cast<visit_t*>(dlsym(module, "visit"));
    visit != nullptr ? visit(with) : throw std::runtime_error(dlerror());
    return with;
}

TEST(module, has_the_same_texts_types_and_exceptions) {
    meeting const with = met();
    auto const own = samples();
    for (std::size_t i = 0; i < own.size(); ++i) {
        EXPECT_EQ(velum::type_key(own[i].value.type()), with.texts.at(i));
        EXPECT_TRUE(own[i].value.type() == with.values.at(i).type());
        std::ostringstream stream;
        velum::write(writer_on(stream), velum::any_map{{"k", with.values[i]}});
        EXPECT_EQ(stream.str(), body_of("k", own[i].tag, own[i].payload));
    }
    EXPECT_EQ(boost::any_cast<std::string>(with.values.at(0)), "");
    EXPECT_EQ(with.texts.back(), velum::ustring("a text of both"));
    EXPECT_TRUE(library_exceptions::all_caught(with.module_throws) && with.module_caught);
}

TEST(module, makes_objects_that_the_host_stores_reads_and_releases) {
    meeting with = met();
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

}  // namespace
