#include "../storing.hpp"

#include <velum/velum.hpp>

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QVector3D>
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/array.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/binary.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include <algorithm>
#include <array>
#include <deque>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>

// A graph of 50,000 nodes as an editor has them: a name, a place, the parent, and links to others, of which several may
// go to one. It is written to a stream from its root on and read back.

namespace {

using contest::enter;
using contest::expect;
using contest::memory_input;
using contest::memory_output;
using contest::noting_buffer;
using contest::work;

constexpr std::size_t count = 50'000;
constexpr std::size_t room = std::size_t{16} << 20U;

/// Where the pointers of a node go, by the numbers of the nodes.
struct pointers {
    std::size_t parent = 0;  // which the first node, the root, doesn't have
    std::vector<std::size_t> links;
};

/// A tree, the parents before their children, and three links for ten nodes that go to one anywhere before. It isn't
/// deeper than who writes and reads by recursion can bear.
std::vector<pointers> draw(std::size_t nodes) {
    constexpr std::size_t deepest = 12;
    std::minstd_rand random(1);
    std::vector<pointers> drawn(nodes);
    std::vector<std::size_t> path{0};
    for (std::size_t i = 1; i < nodes; ++i) {
        path.resize(1 + random() % std::min(path.size(), deepest));
        drawn[i].parent = path.back();
        drawn[path.back()].links.push_back(i);
        if (random() % 10 < 3) {
            drawn[i].links.push_back(random() % i);
        }
        path.push_back(i);
    }
    return drawn;
}

std::vector<pointers> const& drawn() {
    static std::vector<pointers> const all = draw(count);
    return all;
}

template <class Owner>
auto link_to(Owner const& node) {
    return node.get();
}

template <class Node>
std::shared_ptr<Node> link_to(std::shared_ptr<Node> const& node) {
    return node;
}

template <class Owner>
void link_all(std::vector<Owner> const& nodes, std::vector<pointers> const& all) {
    for (std::size_t i = 0; i < all.size(); ++i) {
        auto const& [parent, links] = all[i];
        if (i != 0) {
            nodes[i]->parent = link_to(nodes[parent]);
        }
        nodes[i]->links.reserve(links.size());
        for (std::size_t const to : links) {
            nodes[i]->links.emplace_back(link_to(nodes[to]));
        }
    }
}

/// All nodes, the root first.
template <class Node, class Owner>
std::vector<Owner> grow(std::vector<pointers> const& all = drawn()) {
    std::vector<Owner> nodes;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Owner const& node = nodes.emplace_back(new Node);
        node->name = ("node " + std::to_string(i)).c_str();
        node->place = {static_cast<float>(i), 0, 1};
    }
    link_all(nodes, all);
    return nodes;
}

/// Nodes that hold each other in cycles, until the destructor takes these apart.
template <class Owner>
struct cyclic_graph {
    std::deque<Owner> nodes;  // in which they stay, or all would be counted up and down when it grows

    cyclic_graph() = default;
    explicit cyclic_graph(std::vector<Owner> const& grown) : nodes(grown.begin(), grown.end()) {}
    cyclic_graph(cyclic_graph const&) = delete;
    cyclic_graph& operator=(cyclic_graph const&) = delete;

    ~cyclic_graph() {
        for (Owner const& node : nodes) {
            node->parent = nullptr;
            node->links.clear();
        }
    }
};

/// Finds all nodes, each by the link from its parent, for who gets no more than the root.
template <class Link, class Owners>
void collect(Link const& node, Owners& nodes) {
    nodes.emplace_back(node);
    for (Link const& to : node->links) {
        if (to->parent == node) {
            collect(to, nodes);
        }
    }
}

/// Enters who writes a graph and reads it back. `read` gives the number of nodes.
template <class Sink = memory_output, class Source = memory_input, class Make, class Write, class Read>
bool enter_both(std::string const& name, Make make, Write write, Read read) {
    return contest::enter_storing<Sink, Source>({"graph", count, room, "an object of a graph", count}, name, make,
                                                write, [read](Source& in) { return read(in) == count; });
}

namespace of_velum {

using namespace velum;

class node : public implements<node, i_serializable_t> {
public:
    static constexpr guid_t class_id{"{6D1B7A52-90C4-4E0B-8F27-6A4C35E9D1B8}"};

    using link = iptr<i_serializable_t>;

    std::string name;
    std::array<float, 3> place{};
    link parent;
    std::vector<link> links;

    void serialize(iptr<i_serializer_t> const& s) const override {
        s->write_string(name);
        s->write(reinterpret_cast<char const*>(&place), sizeof place);
        s->write_object(parent);
        auto const size = static_cast<std::uint32_t>(links.size());
        s->write(reinterpret_cast<char const*>(&size), sizeof size);
        for (link const& to : links) {
            s->write_object(to);
        }
    }

    void deserialize(iptr<i_serializer_t> const& s) override {
        s->read_string(name);
        s->read(reinterpret_cast<char*>(&place), sizeof place);
        s->read_object(parent);
        std::uint32_t size = 0;
        s->read(reinterpret_cast<char*>(&size), sizeof size);
        links.resize(size);
        for (link& to : links) {
            s->read_object(to);
        }
    }
};

using graph = cyclic_graph<iptr<node>>;

graph make(std::vector<pointers> const& all) {
    return graph(grow<node, iptr<node>>(all));
}

/// The stream stays the caller's.
template <class Stream>
boost::shared_ptr<Stream> borrowed(Stream& stream) {
    return {boost::shared_ptr<void>(), &stream};
}

void write(std::ostream& out, graph const& from) {
    iptr<i_ostream_t> target;
    iptr<i_serializer_t> writer;
    basic_ostream_t::create(nullptr, borrowed(out), iid_ostream, &target);
    basic_serializer_t::create(nullptr, target, 0, iid_serializer, &writer);
    writer->write_object(from.nodes.front().get());
}

std::size_t read(std::istream& in) {
    graph back;
    iptr<i_istream_t> origin;
    iptr<i_object_factory_t> factory;
    iptr<i_serializer_t> reader;
    basic_istream_t::create(nullptr, borrowed(in), iid_istream, &origin);
    basic_object_factory_t::create(nullptr, iid_object_factory, &factory);
    auto const rebuild = [&back](auto const&, auto const&, iptr<i_unknown_t>& out) {
        return back.nodes.emplace_back(new node)->query_interface(iid_unknown, &out);
    };
    factory->register_class(node::class_id, {}, {}, rebuild, {});
    basic_serializer_t::create(nullptr, origin, factory, 0, iid_serializer, &reader);
    node::link root;
    reader->read_object(root);
    return back.nodes.size();
}

bool enter_sizes() {
    for (std::size_t nodes = 1000; nodes <= 2'048'000; nodes *= 2) {
        std::size_t const bytes = nodes * 100;
        std::string const size = std::to_string(nodes);
        enter({"scale, write objects", size, static_cast<double>(nodes), [nodes, bytes] {
                   auto const out = std::make_shared<memory_output>(bytes);
                   return work([out, from = contest::keep([nodes] { return make(draw(nodes)); })] {
                       out->rewind();
                       write(*out, *from);
                       expect(out->good());
                   });
               }});
        enter({"scale, read objects", size, static_cast<double>(nodes), [nodes, bytes] {
                   memory_output out(bytes);
                   write(out, make(draw(nodes)));
                   auto const in = std::make_shared<memory_input>(out.written());
                   return work([in, nodes] {
                       in->rewind();
                       expect(read(*in) == nodes);
                   });
               }});
    }
    return true;
}

bool const entered = enter_both(
                         "velum", [] { return make(drawn()); }, write, read) &&
                     enter_sizes();

}  // namespace of_velum

/// Nodes as those have them who keep the owners of all nodes beside the graph.
namespace plain {

template <class Text, class Place>
struct node {
    Text name;
    Place place{};
    node* parent = nullptr;
    std::vector<node*> links;
};

template <class Node>
using graph = std::vector<std::unique_ptr<Node>>;

template <class Node>
graph<Node> make() {
    return grow<Node, std::unique_ptr<Node>>();
}

using std_node = node<std::string, std::array<float, 3>>;

}  // namespace plain

namespace of_floor {

using graph = plain::graph<plain::std_node>;

/// What velum writes.
noting_buffer& calls() {
    static noting_buffer noted;
    if (noted.sizes.empty()) {
        std::ostream stream(&noted);
        of_velum::write(stream, of_velum::make(drawn()));
    }
    return noted;
}

graph make() {
    calls();  // are noted before anything is measured
    return plain::make<plain::std_node>();
}

using numbers = std::unordered_map<void const*, std::uint32_t>;

/// Goes where velum goes, and gives numbers to what it meets.
void walk(plain::std_node const* node, numbers& met) {
    if (node == nullptr || !met.try_emplace(node, static_cast<std::uint32_t>(met.size())).second) {
        return;
    }
    walk(node->parent, met);
    for (plain::std_node const* to : node->links) {
        walk(to, met);
    }
}

void write(std::ostream& out, graph const& nodes) {
    char const* from = calls().bytes.data();
    for (std::streamsize const size : calls().sizes) {
        out.write(from, size);
        from += size;
    }
    numbers met;
    walk(nodes.front().get(), met);
    expect(met.size() == count);
}

std::size_t read(std::istream& in) {
    char* to = calls().bytes.data();
    for (std::streamsize const size : calls().sizes) {
        in.read(to, size);
        to += size;
    }
    graph nodes(count);
    for (auto& node : nodes) {
        node = std::make_unique<plain::std_node>();
    }
    link_all(nodes, drawn());
    return in.good() ? nodes.size() : 0;
}

bool const entered = enter_both("floor", make, write, read);

}  // namespace of_floor

/// cereal follows no pointers but smart ones.
namespace of_cereal {

struct node {
    std::string name;
    std::array<float, 3> place{};
    std::shared_ptr<node> parent;
    std::vector<std::shared_ptr<node>> links;

    template <class Archive>
    void serialize(Archive& archive) {
        archive(name, place, parent, links);
    }
};

using graph = cyclic_graph<std::shared_ptr<node>>;

graph make() {
    return graph(grow<node, std::shared_ptr<node>>());
}

void write(std::ostream& out, graph const& from) {
    cereal::BinaryOutputArchive archive(out);
    archive(from.nodes.front());
}

std::size_t read(std::istream& in) {
    graph back;
    std::shared_ptr<node> root;
    cereal::BinaryInputArchive archive(in);
    archive(root);
    collect(root, back.nodes);
    return back.nodes.size();
}

bool const entered = enter_both("cereal", make, write, read);

}  // namespace of_cereal

namespace plain {

template <class Archive>
void serialize(Archive& archive, std_node& node, unsigned /*version*/) {
    archive& node.name& node.place& node.parent& node.links;
}

}  // namespace plain

namespace of_boost {

constexpr auto flags = boost::archive::no_header | boost::archive::no_codecvt;

void write(std::ostream& out, plain::graph<plain::std_node> const& from) {
    boost::archive::binary_oarchive archive(out, flags);
    plain::std_node const* const root = from.front().get();
    archive << root;
}

std::size_t read(std::istream& in) {
    plain::graph<plain::std_node> back;
    plain::std_node* root = nullptr;
    boost::archive::binary_iarchive archive(in, flags);
    archive >> root;
    collect(root, back);
    return back.size();
}

bool const entered = enter_both("Boost.Serialization", plain::make<plain::std_node>, write, read);

}  // namespace of_boost

/// Pointers are numbers here, that of null is 0. A number met for the first time has its node behind it.
namespace of_qt {

using node = plain::node<QString, QVector3D>;
using graph = plain::graph<node>;
using numbers = QHash<node const*, quint32>;

void put(QDataStream& out, numbers& met, node const* each) {
    quint32& number = met[each];
    bool const is_new = number == 0 && each != nullptr;
    if (is_new) {
        number = static_cast<quint32>(met.size() - 1);
    }
    out << number;
    if (is_new) {
        out << each->name << each->place;
        put(out, met, each->parent);
        out << static_cast<quint32>(each->links.size());
        for (node const* to : each->links) {
            put(out, met, to);
        }
    }
}

node* get(QDataStream& in, graph& met) {
    quint32 number = 0;
    in >> number;
    if (number < met.size()) {
        return met[number].get();
    }
    node* const made = met.emplace_back(std::make_unique<node>()).get();
    in >> made->name >> made->place;
    made->parent = get(in, met);
    quint32 size = 0;
    in >> size;
    made->links.resize(size);
    for (node*& to : made->links) {
        to = get(in, met);
    }
    return made;
}

using device = contest::qt_device;

void write(device& out, graph const& from) {
    QDataStream stream(&out);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    numbers met{{nullptr, 0}};
    put(stream, met, from.front().get());
}

std::size_t read(device& in) {
    QDataStream stream(&in);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    graph met(1);
    get(stream, met);
    return met.size() - 1;
}

bool const entered = enter_both<device, device>("QDataStream", plain::make<node>, write, read);

}  // namespace of_qt

}  // namespace
