#include "../contest.hpp"

#include <velum/velum.hpp>

#include <memory>
#include <string>
#include <vector>

// From a thousand to eight million values: what one takes must stay what it is.

namespace {

using contest::enter;
using contest::work;

constexpr int values_of_record = 10;

velum::any_map document(int values) {
    std::vector<velum::any_map> records;
    for (int i = 0; i < values; i += values_of_record) {
        velum::any_map& record = records.emplace_back();
        for (int k = 0; k < values_of_record; ++k) {
            record["value " + std::to_string(k)] =
                k % 2 == 0 ? boost::any(i + k) : boost::any("text " + std::to_string(i));
        }
    }
    return {{"records", std::move(records)}};
}

std::shared_ptr<contest::memory_output> written(int values) {
    auto const out = std::make_shared<contest::memory_output>(static_cast<std::size_t>(values) * 40 + 100);
    velum::write(*out, document(values));
    return out;
}

bool enter_sizes() {
    for (int values = 1000; values <= 8'192'000; values *= 2) {
        std::string const size = std::to_string(values);
        enter({"scale, write values", size, static_cast<double>(values), [values] {
                   return work([out = written(values), map = document(values)] {
                       out->rewind();
                       velum::write(*out, map);
                   });
               }});
        enter({"scale, read values", size, static_cast<double>(values), [values] {
                   auto const in = std::make_shared<contest::memory_input>(written(values)->written());
                   return work([in] {
                       in->rewind();
                       velum::any_map back;
                       velum::read(*in, back);
                   });
               }});
    }
    return true;
}

bool const entered = enter_sizes();

}  // namespace
