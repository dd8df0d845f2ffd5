#include "support/counting_object.hpp"
#include "support/failure.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

namespace {

using support::counting_object;
using object_ptr = velum::iptr<counting_object>;

static_assert(sizeof(object_ptr) == sizeof(void*) && !std::is_convertible_v<object_ptr, bool>);
static_assert(std::is_convertible_v<counting_object*, object_ptr> && std::is_convertible_v<std::nullptr_t, object_ptr>);

TEST(iptr, takes_and_drops_references) {
    support::journal calls;
    counting_object a(calls, "a"), b(calls, "b");
    auto const taken = [&] { return std::exchange(calls, ""); };
    {
        object_ptr p(&a), q(&b), null, &same = p;
        object_ptr const copy(p), moved(std::move(p)), also_null(null);
        EXPECT_EQ(taken(), "a+ b+ a+ a+ ");
        EXPECT_TRUE(p && copy && moved && !null && !also_null) << "a move is a copy";
        p = q;
        EXPECT_EQ(taken(), "a- b+ ");
        p = copy;
        p = copy;
        EXPECT_EQ(taken(), "b- a+ a- a+ ") << "what is held goes before what comes";
        p = std::move(q);
        EXPECT_TRUE(p.get() == &b && q.get() == &b);
        EXPECT_EQ(taken(), "a- b+ ");
        p = same;
        p = std::move(same);
        EXPECT_EQ(taken(), "");
        p = nullptr;
        p = null;
        EXPECT_EQ(taken(), "b- ");
    }
    EXPECT_EQ(taken(), "a- a- b- ");
    a.answers[velum::iid_string] = &b;
    object_ptr const p(&a), found(p, velum::iid_string), missing(p, velum::iid_unknown);
    EXPECT_EQ(taken(), "a+ a? b+ a? ");
    EXPECT_TRUE(found.get() == &b && !missing && a.asked_into == &missing) << "its address is the slot";
    EXPECT_FALSE(object_ptr(object_ptr(), velum::iid_string));
}

TEST(iptr, asks_by_the_interface_alone) {
    using velum::i_string_t;
    auto const text = velum::make<velum::basic_string_t>("text");
    EXPECT_EQ(text.as<i_string_t>()->string(), "text");
    EXPECT_EQ(support::references(text), 1);
    velum::iptr<i_string_t> const null;
    EXPECT_TRUE(!text.try_as<velum::i_uany_map_t>() && !null.try_as<i_string_t>());
    EXPECT_EQ(support::failure_of([&] { text.as<velum::i_uany_map_t>(); }),
              "std::runtime_error: object doesn't have the interface velum::i_uany_map_t "
              "{D2873496-E7B0-4909-AB10-C315479EFD64}");
    EXPECT_EQ(support::failure_of([&] { null.as<i_string_t>(); }),
              "std::runtime_error: null was asked for the interface velum::i_string_t "
              "{7DBD8CA5-357A-4C94-ACB8-EFDC52A200F9}");
}

struct nothing_counted {
    void add_ref() {}
    void release() {}
};

TEST(iptr, is_ordered_by_unsigned_addresses_null_first) {
    std::uintptr_t const rising[] = {0, 1, 0x7FFFFFFFFFFFFFFF, 0x8000000000000000};
    for (std::uintptr_t const x : rising) {
        velum::iptr<nothing_counted> const p(reinterpret_cast<nothing_counted*>(x));
        for (std::uintptr_t const y : rising) {
            velum::iptr<nothing_counted> const q(reinterpret_cast<nothing_counted*>(y));
            EXPECT_TRUE((p <=> q) == (x <=> y) && (p == q) == (x == y)) << x << " " << y;
        }
    }
}

}  // namespace
