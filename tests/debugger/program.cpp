// Values for gdb to look at.

#include "support/samples.hpp"

#include <velum/velum.hpp>

#include <array>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct widget {
    int a = 1;
    double b = 2;
};

// Two interfaces, so that one of them isn't at the beginning of the object.
class note_t : public velum::implements<note_t, velum::i_unknown_map_t, velum::i_string_t> {
public:
    static constexpr velum::guid_t class_id{"{3F0C6A52-8D1E-4B97-A6C4-5E2B90D7F118}"};
    static constexpr char const* class_name = "note";

    void set(std::string const&, velum::iptr<velum::i_unknown_t> const&) override {}
    velum::iptr<velum::i_unknown_t> get(std::string const&) override { return nullptr; }
    std::string& string() override { return text_; }
    std::string const& string() const override { return text_; }

private:
    std::string text_;
};

class badge_t : public velum::implements_aggregatable<badge_t, velum::i_string_t> {
public:
    static constexpr velum::guid_t class_id{"{7B1B2A54-3D3C-4C0B-8F6E-0C51B1D2E9A7}"};
    static constexpr char const* class_name = "badge";

    std::string& string() override { return text_; }
    std::string const& string() const override { return text_; }

private:
    std::string text_;
};

// A badge is a part of each frame.
class frame_t : public velum::flat_t<frame_t, velum::i_unknown_t> {
public:
    static velum::iptr<velum::i_unknown_t> make() {
        velum::iptr<frame_t> const frame(new frame_t);
        badge_t::create_function(frame.get(), nullptr, velum::iid_unknown, &frame->badge_);
        return frame.get();
    }

    bool query_interface(velum::guid_t const& iid, void* out) override {
        return flat_t::query_interface(iid, out) || badge_->query_interface(iid, out);
    }

private:
    friend velum::object_access;

    velum::iptr<i_unknown_t> badge_;
    std::int32_t ref_count = 0;
};

class loner_t : public velum::i_unknown_t {
public:
    bool query_interface(velum::guid_t const&, void*) override { return false; }
    std::int32_t add_ref() override { return 1; }
    std::int32_t release() override { return 1; }
};

template <class T>
struct place {
    alignas(T) std::array<unsigned char, sizeof(T)> memory;

    explicit place(unsigned char byte) { memory.fill(byte); }
    T const& value() const { return *static_cast<T const*>(static_cast<void const*>(&memory)); }
};

/// What may stand where a variable wasn't made yet.
struct unmade {
    using any_map = velum::any_map;
    using uany_map = velum::uany_map;
    using anys = std::vector<boost::any>;

    place<any_map> a;
    place<uany_map> b;
    place<anys> c;
    place<velum::byte_vector> d;
    place<boost::any> e;
    place<velum::ustring> f;
    place<velum::iptr<velum::i_unknown_t>> g;
    any_map const& map = a.value();
    uany_map const& interned = b.value();
    anys const& values = c.value();
    velum::byte_vector const& bytes = d.value();
    boost::any const& any = e.value();
    velum::ustring const& text = f.value();
    velum::iptr<velum::i_unknown_t> const& pointer = g.value();

    explicit unmade(unsigned char byte) : a(byte), b(byte), c(byte), d(byte), e(byte), f(byte), g(byte) {}
};

using vec2 = math::vec<float, 2, math::use_simd_tag>;
using vec3 = math::vec<float, 3, math::use_simd_tag>;

void here_gdb_looks() {}
void use(auto const&...) {}

vec2 half(vec2 const& of) {
    return {of[0] / 2, of[1] / 2};
}

void values() {
    using velum::any_map;
    using velum::uany_map;
    using object = velum::iptr<velum::i_unknown_t>;

    velum::guid_t const id("{f39ece85-3af5-444c-857e-337c7401a53f}");
    velum::ustring const name("name"), empty;
    velum::byte_vector const no_bytes, bytes{0, 255, 1};
    vec2 const pair(3, 4);
    vec3 const triple(1, 2, 0.5);
    math::quat<float> const turn(1, 2, 3, 4);
    velum::affine_space3 const place_of({triple, triple, {7, 8, 9}}, triple);
    tessa::mat<int, 2, 1> const column(1, -2);
    tessa::mat<double, 2, 3> const matrix(1, 2, 3, 4, 5, 6);

    any_map samples;
    for (support::sample const& each : support::samples()) {
        samples.emplace((each.tag < 10 ? "0" : "") + std::to_string(each.tag), each.value);
    }
    any_map const nothing;
    any_map odd{{"char const*", "text"}, {"empty", boost::any()}, {"long", 7L}, {"widget", widget()}};
    uany_map const interned{{"k", any_map{{std::string("zero\0 and \"\xFF\xC3\xA9", 14), std::string(500, 'x')}}}};
    std::vector<any_map> const maps{{{"deep", std::vector<boost::any>{any_map{{"n", 1LL}}, boost::any()}}}, {}};
    boost::any const held(maps);
    any_map arrived;
    std::stringstream stream;
    velum::write(stream, any_map{{"read by the library", bytes}, {"vector", triple}});
    velum::read(stream, arrived);
    any_map broken{{"a", 1}, {"b", 2}, {"c", 3}};

    object const null;
    auto const note = velum::make<note_t>();
    auto const side_of_note = note.as<velum::i_string_t>();
    auto const badge = velum::make<badge_t>();
    auto const identity_of_badge = badge.as<velum::i_unknown_t>();
    auto const frame = frame_t::make();
    auto const part = frame.as<velum::i_string_t>();
    object const again[] = {part.as<velum::i_unknown_t>(), part.as<velum::i_unknown_t>()};
    loner_t alone;
    velum::iptr<velum::i_unknown_t> const loner(&alone);
    any_map const objects{{"note", note.as<velum::i_unknown_t>()}, {"side", side_of_note}};

    unmade const zeros(0), garbage(0xAB);
    use(id, name, empty, no_bytes, bytes, half(pair), triple, turn, place_of, column, matrix, nothing, odd, interned,
        held, broken);
    use(null, identity_of_badge, again, loner, objects, zeros, garbage);
    here_gdb_looks();
}

}  // namespace

int main() {
    values();
}
