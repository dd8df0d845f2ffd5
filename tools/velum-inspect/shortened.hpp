#pragma once

#include "events.hpp"

#include <cstdint>
#include <vector>

namespace inspect {

/// Hands on what it is told but for the elements of vectors beyond the first few.
class shortened : public view {
public:
    /// `most`: how many elements of a vector, and how many objects with references, are shown.
    shortened(view& to, std::uint64_t most) : to_(to), most_(most) {}

    void begin(document kind) override { to_.begin(kind); }
    void value(slot const& at, content const& held, std::uint64_t end) override;
    void open(slot const& at, form shape, std::optional<std::uint64_t> count) override;
    void object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) override;
    void close(std::uint64_t end) override;
    void null(slot const& at) override;
    void reference(slot const& at, object_id id, bool is_around) override;
    void finish(ending const& end) override;

private:
    bool shows(slot const& at);
    bool enters(slot const& at);

    view& to_;
    std::uint64_t most_;
    std::uint64_t hidden_ = 0;             // levels within an element that isn't shown
    std::vector<std::uint64_t> left_out_;  // elements, for each container that is open and shown
};

}  // namespace inspect
