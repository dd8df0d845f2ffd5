#include "support/bytes.hpp"
#include "support/failure.hpp"

#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <utility>

namespace {

using velum::guid_t;

TEST(guid, constants_have_their_bytes) {
    guid_t const null;
    std::pair<guid_t const&, char const*> const rows[] = {
        {velum::iid_unknown, "f39ece85 3af5444c 857e337c 7401a53f"},
        {velum::iid_unknown_map, "1b0392ad bc334b95 8094d69c 6b48bd46"},
        {velum::iid_uany_map, "d2873496 e7b04909 ab10c315 479efd64"},
        {velum::iid_string, "7dbd8ca5 357a4c94 acb8efdc 52a200f9"},
        {velum::iid_serializer, "f8fcb0ec 862347ff 9a8744f6 e0eb7678"},
        {velum::iid_serializable, "e74d82ca aec9456e 839f0408 3be78184"},
        {velum::iid_ostream, "f78de13d 0868457b 852d1c51 8a4bd020"},
        {velum::iid_object_factory, "c6291c66 d18b4277 99d29d67 8a8b1f80"},
        {velum::iid_istream, "bd70dd7c a8174dc7 bbd9f1b4 fbcc302d"},
        {velum::iid_status, "1ae9becd 001c423b 8e7547f6 0e5f0bf4"},
        {velum::iid_command, "46a018c7 a3244bea 9bfcbed2 77a851d4"},
        {velum::iid_event, "4538dd9d f8f84a8f b0d53614 ed613f30"},
        {velum::iid_event_handler, "fc5c9ca2 2ce4466b 9b40f887 a093c179"},
        {velum::iid_context, "a8081763 a31240bc 8f5a1483 5c4942ef"},
        {velum::iid_command_manager, "2de71a96 d2f64542 93cae62c 3c0303a5"},
        {velum::uany_map_obj_t::_clsid, "2d4af8b5 dd7543fc a053411a 316f2c99"},
        {null, "00000000 00000000 00000000 00000000"},
    };
    for (auto const& [id, hex] : rows) {
        EXPECT_EQ(std::string(reinterpret_cast<char const*>(&id), sizeof id), support::from_hex(hex)) << hex;
        EXPECT_EQ(guid_t(id.string()), id);
    }
}

// By the constructor for literals, which have their end in the array.
guid_t from_array(std::string const& text) {
    char array[64] = {};
    text.copy(array, sizeof array - 1);
    return guid_t(array);
}

TEST(guid, takes_and_refuses_texts) {
    static_assert(guid_t("F39ECE853af5444c857e337c7401a53f") == velum::iid_of<velum::i_unknown_t>);
    std::string const good = "{F39ECE85-3AF5-444C-857E-337C7401A53F}";
    EXPECT_EQ(velum::iid_unknown.string(), good);
    for (char const* const text : {"f39ece85-3af5-444c-857e-337c7401a53f", "{F39ECE853AF5444c857E337C7401A53F}",
                                   "f39ECE853af5444C857E337c7401A53f"}) {
        EXPECT_EQ(guid_t(text), guid_t(good)) << text;
        EXPECT_EQ(from_array(text), guid_t(good)) << text;
    }
    std::string const inner(good, 1, 36), nul(1, '\0');
    for (auto const& text :
         {std::string(), good + nul, " " + good, good.substr(0, 37), good.substr(1), "(" + inner + ")",
          std::string("{F39ECE85-3AF5444C-857E-337C7401A53F}"), "g" + inner.substr(1), inner.substr(0, 35) + "G",
          inner + "}", inner.substr(0, 8) + "0" + inner.substr(9), std::string(32, '-'), std::string(36, '-')}) {
        EXPECT_EQ(support::failure_of([&] { guid_t const id(text); }),
                  "boost::wrapexcept<std::runtime_error>: invalid uuid string")
            << text;
        if (text.find('\0') == text.npos) {
            EXPECT_EQ(support::failure_of([&] { from_array(text); }),
                      "boost::wrapexcept<std::runtime_error>: invalid uuid string")
                << text;
        }
    }
}

// The hashes were worked out apart from this code.
TEST(guid, is_ordered_by_unsigned_bytes_and_has_the_same_hash_in_every_build) {
    guid_t const rising[] = {guid_t("0000000000000000000000000000007f"), guid_t("00000000000000000000000000000080"),
                             guid_t("7f000000000000000000000000000000"), guid_t("80000000000000000000000000000000")};
    for (auto const& a : rising) {
        for (auto const& b : rising) {
            EXPECT_EQ(a <=> b, &a <=> &b) << a.string() << b.string();
            EXPECT_EQ(a == b, &a == &b) << a.string() << b.string();
        }
    }
    EXPECT_EQ(std::hash<guid_t>()(velum::iid_unknown), 0x11a1de47b13de6f1);
    EXPECT_EQ(hash_value(rising[3]), 0x0bd934dd025b9167);
}

}  // namespace
