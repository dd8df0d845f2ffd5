#include "checks.hpp"
#include "targets.hpp"

// Graphs of objects of the library's classes and of one class more, from streams that keep quiet about what is missing
// and from such that don't.
void fuzz::objects(std::string const& bytes) {
    for (auto const exceptions : {std::ios::goodbit, std::ios::failbit}) {
        input in(bytes);
        in.stream.exceptions(exceptions);
        std::vector<serializable> records;
        decode_objects(in, records);
    }
}
