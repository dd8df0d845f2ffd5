// A class of one's own in one file: two interfaces, registered, saved and loaded in a graph with a cycle, and checked.

#include <velum/testing/conformance.hpp>
#include <velum/velum.hpp>

#include <boost/smart_ptr/make_shared.hpp>

#include <iostream>
#include <sstream>
#include <string>

using namespace velum;

class i_named_t : public i_unknown_t {
public:
    virtual std::string const& name() const = 0;
};

class i_linked_t : public i_unknown_t {
public:
    virtual iptr<i_linked_t>& next() = 0;
};

template <>
inline constexpr guid_t velum::iid_of<i_named_t>{"{104D25CD-2F30-4C47-8001-1A38EF2212A0}"};
template <>
inline constexpr guid_t velum::iid_of<i_linked_t>{"{94AD56F7-F540-4A96-B178-A8255BA70ADD}"};

class stop_t : public implements<stop_t, i_named_t, i_linked_t, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{34682589-5B97-415F-ABD1-A46ED8E07098}"};
    static constexpr char const* class_name = "stop";

    explicit stop_t(std::string const& name = {}) : name_(name) {}

    std::string const& name() const override { return name_; }
    iptr<i_linked_t>& next() override { return next_; }

    void serialize(iptr<i_serializer_t> const& s) const override {
        s->write_string(name_);
        s->write_object(next_.try_as<i_serializable_t>());
    }
    void deserialize(iptr<i_serializer_t> const& s) override {
        iptr<i_serializable_t> next;
        s->read_string(name_);
        s->read_object(next);
        next_ = next ? next.as<i_linked_t>() : nullptr;
    }

private:
    std::string name_;
    iptr<i_linked_t> next_;
};

int main() {
    auto const factory = make<basic_object_factory_t>().as<i_object_factory_t>();
    factory->register_class(stop_t::class_info());
    auto const harbour = make<stop_t>("harbour"), market = make<stop_t>("market");
    harbour->next() = market.get();
    market->next() = harbour.get();

    auto const file = boost::make_shared<std::stringstream>();
    auto output = make<basic_ostream_t>(file).as<i_ostream_t>();
    auto const input = make<basic_istream_t>(file).as<i_istream_t>();
    make<basic_serializer_t>(output, 0).as<i_serializer_t>()->write_object(harbour.get());
    iptr<i_serializable_t> loaded;
    make<basic_serializer_t>(input, factory, 0).as<i_serializer_t>()->read_object(loaded);
    auto const copy = loaded.as<i_linked_t>(), next = copy->next();
    bool const same = next.as<i_named_t>()->name() == "market" && next->next() == copy;

    auto const untie = [](iptr<i_unknown_t> const& stop) { stop.as<i_linked_t>()->next() = nullptr; };
    auto found = conformance::check_class(factory, stop_t::class_id);
    conformance::add(found, conformance::check_round_trip(harbour.as<i_unknown_t>(), factory, untie));
    for (std::string const& finding : found) {
        std::cerr << finding << '\n';
    }
    harbour->next() = next->next() = nullptr;  // objects that hold each other live until one lets go
    return same && found.empty() ? 0 : 1;
}
