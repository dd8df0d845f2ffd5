// A class with one mistake, by its number; without one it compiles.

#include <velum/velum.hpp>

class i_note_t : public velum::i_unknown_t {
public:
    virtual int number() const = 0;
};

#if MISTAKE != 1
template <>
inline constexpr velum::guid_t velum::iid_of<i_note_t> {
#    if MISTAKE == 2
    "{E74D82CA-AEC9-456e-839F-04083BE78184}"  // that of i_serializable_t
#    elif MISTAKE == 3
    "{E74D82CA-AEC9-456e-839F-04083BE7818}"
#    else
    "{0A7E5A37-9D33-4B7C-8C4D-0B62D20E7C11}"
#    endif
};
#endif

class note_t : public velum::BASE<note_t, i_note_t, velum::i_serializable_t> {
public:
#if MISTAKE != 4
    static constexpr velum::guid_t class_id{"{5C8E2B6F-7A35-4E5B-9B9C-1F0E6D2A4B12}"};
#endif
#if MISTAKE != 5
    static constexpr char const* class_name = "note";
#endif

    int number() const override {
        return 1;
    }
#if MISTAKE != 6
    void serialize(velum::iptr<velum::i_serializer_t> const&) const override {}
#endif
    void deserialize(velum::iptr<velum::i_serializer_t> const&) override {}
};

#if MISTAKE == 7
class i_other_t : public velum::i_unknown_t {};
velum::iptr<i_other_t> other(note_t& note) {
    return velum::iptr<i_note_t>(&note).as<i_other_t>();
}
#elif MISTAKE == 8
note_t copy(note_t const& note) {
    return note;
}
#endif

int main() {
    velum::make<velum::basic_object_factory_t>().as<velum::i_object_factory_t>()->register_class(note_t::class_info());
}
