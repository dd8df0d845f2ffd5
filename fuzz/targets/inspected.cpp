#include "checks.hpp"
#include "targets.hpp"

#include "inspect/extent.hpp"
#include "json_view.hpp"
#include "text_view.hpp"

// What velum-inspect makes of a map and of objects: it ends where the library does. A line may also describe a class.
void fuzz::inspected(std::string const& bytes) {
    std::ostringstream printed;
    inspect::json_view json(printed, true);
    inspect::text_view text(printed, true);
    for (std::string const& found : {difference(0, bytes, json), difference(1, bytes, text)}) {
        require(found.empty(), found);
    }
    try {
        inspect::class_catalogue().add(bytes);
    } catch (std::runtime_error const&) {
    }
}
