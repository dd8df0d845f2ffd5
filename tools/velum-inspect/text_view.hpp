#pragma once

#include "events.hpp"

#include <cstddef>
#include <ostream>
#include <string>

namespace inspect {

/// What a value holds, for people.
std::string described(content const& held);

/// A line for each thing, indented by its depth.
class text_view : public view {
public:
    text_view(std::ostream& to, bool with_offsets) : to_(to), with_offsets_(with_offsets) {}

    void begin(document kind) override;
    void value(slot const& at, content const& held, std::uint64_t end) override;
    void open(slot const& at, form shape, std::optional<std::uint64_t> count) override;
    void object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) override;
    void close(std::uint64_t end) override;
    void null(slot const& at) override;
    void reference(slot const& at, object_id id, bool is_around) override;
    void omitted(std::uint64_t count) override;
    void finish(ending const& end) override;

private:
    void line(slot const& at, std::string const& what);
    void indent();

    std::ostream& to_;
    bool with_offsets_;
    std::size_t depth_ = 0;
};

}  // namespace inspect
