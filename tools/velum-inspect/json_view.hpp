#pragma once

#include "events.hpp"

#include <ostream>
#include <string>
#include <vector>

namespace inspect {

/// One JSON value for the whole stream, written as it comes and closed in order also where the stream breaks.
class json_view : public view {
public:
    json_view(std::ostream& to, bool with_offsets) : to_(to), with_offsets_(with_offsets) {}

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
    struct level {
        std::string closing;
        bool is_empty = true;
    };

    void separate();
    void enter(std::string const& opening, std::string const& closing);
    std::string label(slot const& at) const;
    void put_object(slot const& at, std::string const& object);

    std::ostream& to_;
    bool with_offsets_;
    document kind_ = document::map;
    std::vector<level> levels_;
};

}  // namespace inspect
