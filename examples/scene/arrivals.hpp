#pragma once

#include <velum/core/i_serializable.hpp>
#include <velum/core/iptr.hpp>

#include <cstddef>
#include <set>

namespace scene {

/// The objects that a reader brings while it reads a document, whatever holds them in the end.
///
/// A damaged file can tie objects into a knot: an object map that holds itself, or a material that holds the mesh that
/// it belongs to. Counted references would keep such objects for ever, so what arrived is taken apart at the end unless
/// it was accepted. Every knot leads through a map, as meshes hold nothing else, nodes are made into trees only and
/// what a module brings holds no objects, and each object of a knot has arrived before another could hold it.
class arrivals {
public:
    arrivals() = default;
    arrivals(arrivals const&) = delete;
    arrivals& operator=(arrivals const&) = delete;
    ~arrivals();

    /// For the reader's object mapper. Throws `std::runtime_error` for an object map that arrives a second time: it
    /// doesn't tell what it holds, so no check of the document could find out where it is.
    void add(velum::iptr<velum::i_serializable_t> const& object);

    /// Throws `std::runtime_error` unless `count` objects have arrived, those of the document. If so they are whole,
    /// and are left as they are.
    void accept(std::size_t count);

private:
    std::set<velum::iptr<velum::i_unknown_t>> objects_;  // by what they answer to `iid_unknown`
};

}  // namespace scene
