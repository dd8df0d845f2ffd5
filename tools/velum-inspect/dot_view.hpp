#pragma once

#include "events.hpp"

#include <ostream>
#include <string>
#include <vector>

namespace inspect {

/// The objects of a stream as a graph for Graphviz: a node for each with the first of its values, and an edge for each
/// place that leads to one.
class dot_view : public view {
public:
    explicit dot_view(std::ostream& to) : to_(to) {}

    void begin(document kind) override;
    void value(slot const& at, content const& held, std::uint64_t end) override;
    void open(slot const& at, form shape, std::optional<std::uint64_t> count) override;
    void object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) override;
    void close(std::uint64_t end) override;
    void null(slot const&) override {}
    void reference(slot const& at, object_id id, bool is_around) override;
    void finish(ending const& end) override;

private:
    struct node {
        std::string id;
        std::string label;
        int lines = 0;  // of values
    };
    struct level {
        bool is_node = false;
        std::string step;  // from the level around it
    };

    std::string path_to(slot const& at) const;
    void add_edge(slot const& at, std::string const& to);
    void enter(node made);

    std::ostream& to_;
    std::vector<level> levels_;
    std::vector<node> nodes_;
};

}  // namespace inspect
