// A module that brings a class of its own: a note, which is a text with the day on which it was written.

#include "plugin.hpp"

#include <array>
#include <chrono>
#include <set>
#include <string>

namespace {

using namespace velum;

guid_t const clsid_note("{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118}");

uany_map today() {
    std::chrono::year_month_day const day(std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
    return {{"year", static_cast<int>(day.year())},
            {"month", static_cast<int>(static_cast<unsigned>(day.month()))},
            {"day", static_cast<int>(static_cast<unsigned>(day.day()))}};
}

int number(uany_map const& from, char const* key) {
    auto const found = from.find(key);
    if (found == from.end()) {
        throw key_not_found(key);
    }
    return boost::any_cast<int>(found->second);
}

class note_t : public flat_t<note_t, i_string_t, i_uany_map_t, i_serializable_t> {
public:
    /// Takes the text from `params`, where it is under "text".
    static bool create_function(iptr<i_unknown_t> const& outer, iptr<i_unknown_map_t> const& params, guid_t const& iid,
                                void* out) {
        if (outer) {
            return false;
        }
        iptr<note_t> const note(new note_t);
        note->date_ = today();
        if (iptr<i_string_t> const text{params ? params->get("text") : nullptr, iid_string}) {
            note->text_ = text->string();
        }
        return note->query_interface(iid, out);
    }

    std::string& string() override { return text_; }
    std::string const& string() const override { return text_; }
    uany_map const& map() const override { return date_; }

    guid_t clsid() const override { return clsid_note; }
    void serialize_obj(iptr<i_serializer_t> const&) const override {}
    void serialize(iptr<i_serializer_t> const& s) const override {
        s->write_string(text_);
        velum::serialize(date_, s);
    }
    // Takes nothing but numbers: a damaged stream may bring a map with objects, even with this note.
    void deserialize(iptr<i_serializer_t> const& s) override {
        s->read_string(text_);
        uany_map read;
        velum::deserialize(read, s);
        date_ = {{"year", number(read, "year")}, {"month", number(read, "month")}, {"day", number(read, "day")}};
    }

private:
    friend object_access;

    std::array<answer_t, 4> answers() {
        return {{{iid_unknown, side_of<i_string_t>(*this)},
                 {iid_string, side_of<i_string_t>(*this)},
                 {iid_uany_map, side_of<i_uany_map_t>(*this)},
                 {iid_serializable, side_of<i_serializable_t>(*this)}}};
    }

    std::string text_;
    uany_map date_;
    std::int32_t ref_count = 0;
};

}  // namespace

void register_classes(i_object_factory_t& factory) {
    factory.register_class({
        {"clsid", clsid_note},
        {"class_name", std::string("note")},
        {"create_function", create_function_t(&note_t::create_function)},
        {"deserialize_function", deserialize_function_t(&note_t::deserialize_function)},
        {"supported_interfaces", std::set<guid_t>{iid_unknown, iid_string, iid_uany_map, iid_serializable}},
    });
}
