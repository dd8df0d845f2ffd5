// A module that brings a class of its own: a note, which is a text with the day on which it was written.

#include "plugin.hpp"

#include <chrono>
#include <string>

namespace {

using namespace velum;

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

class note_t : public implements<note_t, i_string_t, i_uany_map_t, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118}"};
    static constexpr char const* class_name = "note";

    note_t() = default;

    /// Takes the text from `params`, where it is under "text".
    explicit note_t(iptr<i_unknown_map_t> const& params) : date_(today()) {
        if (auto const text = params ? params->get("text").try_as<i_string_t>() : nullptr) {
            text_ = text->string();
        }
    }

    std::string& string() override { return text_; }
    std::string const& string() const override { return text_; }
    uany_map const& map() const override { return date_; }

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
    std::string text_;
    uany_map date_;
};

}  // namespace

void register_classes(i_object_factory_t& factory) {
    factory.register_class(note_t::class_info());
}
