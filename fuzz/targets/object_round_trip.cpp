#include "checks.hpp"
#include "targets.hpp"

// A graph that was read is written and read again, and comes to the same bytes. Its first writing may put entries in
// another order than they came, by which an object may come to lead back to another's construction stage.
void fuzz::object_round_trip(std::string const& bytes) {
    input in(bytes);
    std::vector<serializable> records, back;
    if (!decode_objects(in, records).failure.empty()) {
        return;
    }
    written const first = write_records(records);
    require_documented(first.failure);
    if (!first.failure.empty()) {
        return;
    }
    input again(first.bytes);
    outcome const result = decode_objects(again, back);
    if (result.failure == "std::runtime_error: object not deserialized yet") {
        return;
    }
    require(result.failure.empty(), "what was written can't be read: " + result.failure);
    require(result.consumed == first.bytes.size(), "a part of what was written isn't read");
    require(records.size() == back.size() && in.arrived.objects().size() >= again.arrived.objects().size(),
            "there are more objects than before");
    require(write_records(back).bytes == first.bytes, "what was read is written otherwise");
}
