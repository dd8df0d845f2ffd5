#include <velum/velum.hpp>

#include <benchmark/benchmark.h>
#include <boost/make_shared.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <malloc.h>

// A graph of objects, written and read: how time grows with the number of objects, and what memory an object takes.

namespace {

/// The bytes that the allocator has handed out and not got back.
std::size_t heap_in_use() {
    auto const heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

using namespace velum;

guid_t const clsid_node("{6D1B7A52-90C4-4E0B-8F27-6A4C35E9D1B8}");

/// A node as an editor has them: a name, a place, its parent, and links to others, of which several may go to one.
class node_t : public flat_t<node_t, i_serializable_t> {
public:
    using link = iptr<i_serializable_t>;

    std::string name;
    std::array<float, 3> place{};
    link parent;
    std::vector<link> links;

    guid_t clsid() const override { return clsid_node; }
    void serialize_obj(iptr<i_serializer_t> const&) const override {}

    void serialize(iptr<i_serializer_t> const& s) const override {
        s->write_string(name);
        s->write(reinterpret_cast<char const*>(&place), sizeof place);
        s->write_object(parent);
        auto const count = static_cast<std::uint32_t>(links.size());
        s->write(reinterpret_cast<char const*>(&count), sizeof count);
        for (link const& to : links) {
            s->write_object(to);
        }
    }

    void deserialize(iptr<i_serializer_t> const& s) override {
        s->read_string(name);
        s->read(reinterpret_cast<char*>(&place), sizeof place);
        s->read_object(parent);
        std::uint32_t count = 0;
        s->read(reinterpret_cast<char*>(&count), sizeof count);
        for (; count != 0; --count) {
            s->read_object(links.emplace_back());
        }
    }

private:
    friend object_access;
    std::array<answer_t, 2> answers() { return {{{iid_unknown, this}, {iid_serializable, this}}}; }
    std::int32_t ref_count = 0;
};

/// Nodes that tie themselves into cycles, which the destructor unties.
struct graph {
    std::vector<iptr<node_t>> nodes;

    graph() = default;
    graph(graph const&) = delete;
    graph& operator=(graph const&) = delete;

    ~graph() {
        for (auto const& node : nodes) {
            node->parent = nullptr;
            node->links.clear();
        }
    }

    node_t::link root() const { return nodes.front().get(); }
};

/// Fills `made` with a tree, the parents before their children, and with three links for ten objects that go back to a
/// node anywhere before.
void grow(graph& made, std::size_t count) {
    constexpr std::size_t deepest = 12;
    std::minstd_rand random(1);
    std::vector<node_t*> path;
    for (std::size_t i = 0; i < count; ++i) {
        iptr<node_t> const node(new node_t);
        node->name = "node " + std::to_string(i);
        node->place = {static_cast<float>(i), 0, 1};
        if (i != 0) {
            path.resize(1 + random() % std::min(path.size(), deepest));
            node->parent = path.back();
            path.back()->links.emplace_back(node.get());
            if (random() % 10 < 3) {
                node->links.emplace_back(made.nodes[random() % i].get());
            }
        }
        made.nodes.push_back(node);
        path.push_back(node.get());
    }
}

iptr<i_serializer_t> writer_on(boost::shared_ptr<std::ostream> const& stream) {
    iptr<i_ostream_t> target;
    iptr<i_serializer_t> writer;
    basic_ostream_t::create(nullptr, stream, iid_ostream, &target);
    basic_serializer_t::create(nullptr, target, 0, iid_serializer, &writer);
    return writer;
}

iptr<i_serializer_t> reader_on(boost::shared_ptr<std::istream> const& stream, graph& made) {
    iptr<i_istream_t> origin;
    iptr<i_object_factory_t> factory;
    iptr<i_serializer_t> reader;
    basic_istream_t::create(nullptr, stream, iid_istream, &origin);
    basic_object_factory_t::create(nullptr, iid_object_factory, &factory);
    auto const rebuild = [&made](auto const&, auto const&, iptr<i_unknown_t>& out) {
        out = made.nodes.emplace_back(new node_t).get();
        return true;
    };
    factory->register_class(clsid_node, {}, {}, rebuild, {});
    basic_serializer_t::create(nullptr, origin, factory, 0, iid_serializer, &reader);
    return reader;
}

/// Counts objects, and the bytes of heap that each took: `taken` for all, of which the stream has `stored`.
void report(benchmark::State& state, std::size_t taken, std::size_t stored) {
    auto const objects = static_cast<double>(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
    state.counters["heap/object"] = static_cast<double>(taken) / objects;
    state.counters["stored/object"] = static_cast<double>(stored) / objects;
}

void write_graph(benchmark::State& state) {
    graph from;
    grow(from, static_cast<std::size_t>(state.range(0)));
    std::size_t taken = 0;
    std::size_t stored = 0;
    for ([[maybe_unused]] auto round : state) {
        auto const stream = boost::make_shared<std::ostringstream>();
        auto const writer = writer_on(stream);
        std::size_t const before = heap_in_use();
        writer->write_object(from.root());
        taken = heap_in_use() - before;
        stored = static_cast<std::size_t>(stream->tellp());
    }
    report(state, taken, stored);
}

void read_graph(benchmark::State& state) {
    auto const stream = boost::make_shared<std::stringstream>();
    {
        graph from;
        grow(from, static_cast<std::size_t>(state.range(0)));
        writer_on(stream)->write_object(from.root());
    }
    std::size_t taken = 0;
    for ([[maybe_unused]] auto round : state) {
        stream->seekg(0);
        graph made;
        auto const reader = reader_on(stream, made);
        std::size_t const before = heap_in_use();
        node_t::link root;
        reader->read_object(root);
        taken = heap_in_use() - before;
        if (made.nodes.size() != static_cast<std::size_t>(state.range(0))) {
            state.SkipWithError("objects are missing");
        }
    }
    report(state, taken, static_cast<std::size_t>(stream->tellp()));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (int const objects : {12'500, 25'000, 50'000, 100'000, 200'000, 400'000}) {
        benchmark->Arg(objects);
    }
    benchmark->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK(write_graph)->Apply(sizes);
BENCHMARK(read_graph)->Apply(sizes);

}  // namespace
