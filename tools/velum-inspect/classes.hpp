#pragma once

#include "types.hpp"

#include <velum/core/guid.hpp>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace inspect {

struct once {};
struct until_null {};
/// As often as an earlier number says: of a field, or under a key of a map ("field.key").
struct counted_by {
    std::string name;
};

struct field {
    stored_type const* type{};
    std::string name;
    std::variant<once, until_null, std::uint64_t, counted_by> repeat;
};

/// What stands in the stages of the objects of one class.
struct class_description {
    velum::guid_t id;
    std::string name;
    std::vector<field> fields;

    /// Whether a field needs the number of this name.
    bool counts_by(std::string_view number) const;
};

/// The classes whose stages can be read: those of velum, and those that the user describes.
class class_catalogue {
public:
    class_catalogue();

    /// A line as "{9C2E3F61-7A54-4B0D-8E11-52B7A0C4D6F3} node: text name, object links until null". Throws
    /// `std::runtime_error` with what is wrong.
    void add(std::string_view line);

    /// One on each line, and comments behind "#". Throws `std::runtime_error`.
    void add_file(std::string const& path);

    class_description const* find(velum::guid_t const& id) const;

private:
    std::map<velum::guid_t, class_description> classes_;
};

}  // namespace inspect
