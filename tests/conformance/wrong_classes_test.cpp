// A class that breaks one rule at a time. The checks must say which, and have nothing against it when it breaks none.

#include "support/node.hpp"

#include <velum/testing/conformance.hpp>

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace velum;
using slot = iptr<i_unknown_t>;

class wrong;

/// How the class does what the protocol asks of it; empty for the right way.
struct ways {
    std::function<bool(wrong&, guid_t const&, void*)> ask{};
    std::function<bool(slot const&, guid_t const&, void*)> create{};
    std::function<bool(slot const&, iptr<i_serializer_t> const&, slot&)> rebuild{};
    std::function<void(wrong&, iptr<i_serializer_t> const&)> write_first{}, read_first{}, read{};
    std::int32_t steps = 1;
    guid_t clsid{"{8A0C2D54-5F0E-4B1B-9C3A-2F6B7D9E1A01}"};
};

class wrong : public implements<wrong, i_string_t, i_uany_map_t, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{8A0C2D54-5F0E-4B1B-9C3A-2F6B7D9E1A01}"};
    static constexpr char const* class_name = "wrong";

    static inline ways now;
    static inline std::set<wrong*> alive;

    wrong() { alive.insert(this); }
    explicit wrong(iptr<i_serializer_t> const& s) : wrong() { now.read_first ? now.read_first(*this, s) : void(); }
    ~wrong() override { alive.erase(this); }

    std::string& string() override { return text; }
    std::string const& string() const override { return text; }
    uany_map const& map() const override { return values; }

    bool answer(guid_t const& iid, void* out) { return implements::query_interface(iid, out); }
    bool query_interface(guid_t const& iid, void* out) override {
        return ask ? ask(*this, iid, out) : answer(iid, out);
    }
    std::int32_t add_ref() override { return implements::add_ref() * now.steps; }

    static bool create_function(slot const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid, void* out) {
        return now.create ? now.create(outer, iid, out) : implements::create_function(outer, params, iid, out);
    }
    static bool deserialize_function(slot const& outer, iptr<i_serializer_t> const& s, slot& out) {
        return now.rebuild ? now.rebuild(outer, s, out) : implements::deserialize_function(outer, s, out);
    }

    guid_t clsid() const override { return now.clsid; }
    void serialize_obj(iptr<i_serializer_t> const& s) const override {
        now.write_first ? now.write_first(const_cast<wrong&>(*this), s) : void();
    }
    void serialize(iptr<i_serializer_t> const& s) const override {
        s->write_string(text);
        s->write_object(link);
    }
    void deserialize(iptr<i_serializer_t> const& s) override {
        s->read_string(text);
        now.read ? now.read(*this, s) : void(s->read_object(link));
    }

    decltype(ways::ask) ask = now.ask;
    std::string text;
    uany_map values;
    iptr<i_serializable_t> link;
};

/// What all checks find on a class that goes these ways, with an object that leads to itself.
conformance::findings findings_of(ways const& now, any_map const& instead = {}) {
    wrong::now = now;
    auto const factory = support::new_factory();
    any_map record = wrong::class_info();
    for (auto const& [key, value] : instead) {
        record[key] = value;
    }
    factory->register_class(wrong::class_id, &wrong::create_function, record, &wrong::deserialize_function, {});
    auto found = conformance::check_class(factory, wrong::class_id);
    if (found.empty()) {
        auto const object = make<wrong>();
        object->text = "state";
        object->link = object.get();
        auto const untie = [](slot const& read) { dynamic_cast<wrong&>(*read).link = nullptr; };
        found = conformance::check_round_trip(object.as<i_unknown_t>(), factory, untie);
        object->link = nullptr;
    }
    wrong::now = {};
    while (!wrong::alive.empty()) {  // what was counted wrongly
        delete *wrong::alive.begin();
    }
    return found;
}

/// Sends the question for a string to another object, which answers in this way.
auto by_another(decltype(ways::ask) const& of_other) {
    return [of_other](wrong& w, guid_t const& iid, void* out) {
        auto const other = make<wrong>();
        other->ask = of_other;
        return iid == iid_string ? other->answer(iid, out) : w.answer(iid, out);
    };
}

bool refuse_text(wrong& w, guid_t const& iid, void* out) {
    return iid == iid_string ? conformance::probe().query_interface(iid, out) : w.answer(iid, out);
}

bool refuse_map(wrong& w, guid_t const& iid, void* out) {
    return iid == iid_uany_map ? conformance::probe().query_interface(iid, out) : w.answer(iid, out);
}

struct row {
    std::string finding;  ///< how one of them begins
    ways now{};
    any_map record{};
};

std::vector<row> rows() {
    return {
        {"query_interface: the object doesn't have the interface {7DBD8CA5", {.ask = refuse_text}},
        {"query_interface: not reflexive: {7DBD8CA5", {.ask = by_another(refuse_text)}},
        {"query_interface: not symmetric: ", {.ask = by_another(refuse_map)}},
        {"query_interface: not transitive: ",
         {.ask =
              [](wrong& w, guid_t const& iid, void* out) {
                  return iid == iid_uany_map ? refuse_map(w, iid, out) : by_another({})(w, iid, out);
              }}},
        {"query_interface: {7DBD8CA5-357A-4C94-ACB8-EFDC52A200F9} answers for an interface that no class has",
         {.ask = [](wrong& w, guid_t const& iid,
                    void* out) { return w.answer(iid == conformance::iid_of_nobody ? iid_string : iid, out); }}},
        {"query_interface: one pointer stands for ",
         {.ask = [](wrong& w, guid_t const& iid,
                    void* out) { return w.answer(iid == iid_uany_map ? iid_string : iid, out); }}},
        {"identity: ", {.ask = by_another({})}},
        {"slot: a question leaves the old content in it",
         {.ask = [](wrong& w, guid_t const& iid,
                    void* out) { return iid != conformance::iid_of_nobody && w.answer(iid, out); }}},
        {"slot: its old content isn't released",
         {.ask = [](wrong& w, guid_t const& iid,
                    void* out) { return std::memset(out, 0, sizeof(void*)), w.answer(iid, out); }}},
        {"slot: its old content is released after",
         {.ask =
              [](wrong& w, guid_t const& iid, void* out) {
                  slot found;
                  bool const is_there = w.answer(iid, &found);
                  std::swap(*static_cast<slot*>(out), found);
                  std::swap(*static_cast<slot*>(out), found);
                  *static_cast<slot*>(out) = found;
                  return is_there;
              }}},
        {"slot: the result doesn't say",
         {.ask = [](wrong& w, guid_t const& iid, void* out) { return w.answer(iid, out), true; }}},
        {"counts: a question takes 0 references, not 1",
         {.ask =
              [](wrong& w, guid_t const& iid, void* out) {
                  return w.answer(iid, out) &&
                         (iid != iid_string || conformance::references(static_cast<i_string_t&>(w)) < 3 ||
                          w.release() > 0);
              }}},
        {"counts: a question takes 2 references, not 1",
         {.ask = [](wrong& w, guid_t const& iid, void* out) { return w.answer(iid, out) && w.add_ref() > 0; }}},
        {"counts: add_ref and release", {.steps = 2}},
        {"create: no object comes for iid_unknown", {.create = [](auto&&...) { return false; }}},
        {"create: no object comes for {7DBD8CA5",
         {.create = [](slot const& outer, guid_t const& iid,
                       void* out) { return !outer && iid != iid_string && make<wrong>()->answer(iid, out); }}},
        {"create: a new object comes with more than the reference in the slot",
         {.create =
              [](slot const& outer, guid_t const& iid, void* out) {
                  auto const made = make<wrong>();
                  return !outer && made->answer(iid, out) && made->add_ref() > 0;
              }}},
        {"create: what comes for {D2873496",
         {.create = [](slot const& outer, guid_t const&,
                       void* out) { return !outer && make<wrong>()->answer(iid_unknown, out); }}},
        {"create: an interface that the class doesn't have must be refused",
         {.create =
              [](slot const& outer, guid_t const& iid, void* out) {
                  return !outer && iid != conformance::iid_of_nobody && make<wrong>()->answer(iid, out);
              }}},
        {"create: under a controlling unknown {7DBD8CA5",
         {.create = [](slot const& outer, guid_t const& iid,
                       void* out) { return (!outer || iid != iid_unknown) && make<wrong>()->answer(iid, out); }}},
        {"aggregate: a refused controlling unknown must leave the slot alone",
         {.create =
              [](slot const& outer, guid_t const& iid, void* out) {
                  return make<wrong>()->answer(outer && iid == iid_unknown ? conformance::iid_of_nobody : iid, out) &&
                         !outer;
              }}},
        {"aggregate: the result is true, and the slot empty",
         {.create =
              [](slot const& outer, guid_t const& iid, void* out) {
                  bool const is_part = outer && iid == iid_unknown;
                  return (make<wrong>()->answer(is_part ? conformance::iid_of_nobody : iid, out) && !outer) || is_part;
              }}},
        {"aggregate: the controlling unknown must not be counted",
         {.create =
              [](slot const& outer, guid_t const& iid, void* out) {
                  return outer ? basic_string_t::create(outer, "", iid, out) && outer->add_ref() > 0
                               : make<wrong>()->answer(iid, out);
              }}},
        {"aggregate: a question to {7DBD8CA5-357A-4C94-ACB8-EFDC52A200F9} doesn't go to the controlling unknown",
         {.create = [](slot const& outer, guid_t const& iid,
                       void* out) { return (!outer || iid == iid_unknown) && make<wrong>()->answer(iid, out); }}},
        {"deserialize function: it makes no object", {.rebuild = [](auto&&...) { return false; }}},
        {"deserialize function: a new object comes with more than the reference",
         {.rebuild =
              [](slot const& outer, auto const&, slot& out) {
                  return !outer && make<wrong>()->answer(iid_unknown, &out) && out->add_ref() > 0;
              }}},
        {"deserialize function: it makes an object of another class",
         {.rebuild = basic_string_t::deserialize_function}},
        {"deserialize function: it leaves bytes of the construction stage unread",
         {.write_first = [](wrong&, auto const& s) { s->write_string("name"); }}},
        {"record: clsid() isn't", {.clsid = iid_string}},
        {"record: \"clsid\" isn't", {}, {{"clsid", iid_string}}},
        {"record: \"class_name\" isn't a std::string", {}, {{"class_name", "wrong"}}},
        {"failed: no object today", {.create = [](auto&&...) -> bool { throw std::runtime_error("no object today"); }}},
        {"record: \"supported_interfaces\" lacks {7DBD8CA5",
         {},
         {{"supported_interfaces", std::set<guid_t>{iid_unknown, iid_uany_map, iid_serializable}}}},
        {"round trip: the state isn't kept: written again, it differs from byte ",
         {.read = [](wrong& w, auto const& s) { s->read_object(w.link), w.text = "other"; }}},
        {"round trip: reading leaves 8 bytes unread", {.read = [](auto&&...) {}}},
        {"round trip: reading takes more bytes",
         {.read = [](wrong& w, auto const& s) { s->read_object(w.link), s->read_string(w.text); }}},
        {"round trip: cycles: 1 references lead back to the object, 0 to its copy",
         {.read = [](wrong& w, auto const& s) { s->read_object(w.link), w.link = nullptr; }}},
        {"round trip: cycles: a reference to the object is read before the object is made",
         {.write_first = [](wrong& w, auto const& s) { s->write_object(w.link); },
          .read_first = [](wrong& w, auto const& s) { s->read_object(w.link); }}},
    };
}

TEST(conformance, has_nothing_against_a_right_class) {
    EXPECT_EQ(findings_of({}), conformance::findings());
}

TEST(conformance, says_which_rule_a_class_breaks) {
    for (row const& row : rows()) {
        std::string all;
        bool is_found = false;
        for (std::string const& finding : findings_of(row.now, row.record)) {
            is_found = is_found || finding.starts_with(row.finding);
            all += "\n  " + finding;
        }
        EXPECT_TRUE(is_found) << row.finding << " isn't among:" << all;
    }
}

}  // namespace
