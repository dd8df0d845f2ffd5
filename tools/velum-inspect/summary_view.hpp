#pragma once

#include "events.hpp"

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace inspect {

/// How many there are of each type and each class, and their bytes. Each byte counts once: those of a container are its
/// count's, and an object's are those of its stages without the objects within.
class summary_view : public view {
public:
    explicit summary_view(std::ostream& to) : to_(to) {}

    void value(slot const& at, content const& held, std::uint64_t end) override;
    void open(slot const& at, form shape, std::optional<std::uint64_t> count) override;
    void object(slot const& at, object_id id, velum::guid_t const& clsid, std::string const& class_name) override;
    void close(std::uint64_t end) override;
    void null(slot const& at) override;
    void reference(slot const& at, object_id id, bool is_around) override;
    void finish(ending const& end) override;

private:
    struct total {
        std::uint64_t count = 0;
        std::uint64_t bytes = 0;
    };
    using table = std::map<std::string, total>;

    struct level {
        std::string class_name;    // of an object
        std::uint64_t begin = 0;   // where it begins
        std::uint64_t within = 0;  // bytes of the objects within
    };

    void enter(slot const& at, std::string const& class_name);
    static void add(table& to, std::string const& name, std::uint64_t bytes);
    void add_name_and_tag(slot const& at);
    void print(char const* title, char const* unit, table const& rows) const;

    std::ostream& to_;
    table types_, frame_, classes_;
    std::vector<level> levels_;
    std::size_t deepest_ = 0;
};

}  // namespace inspect
