#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <istream>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

// What all rows of the table are made with.

namespace contest {

/// Work that is ready to be done, as often as it is called.
using work = std::function<void()>;

/// One who does the work of a row of the table: velum, another library, or the floor, the least that velum's rules
/// leave to be done.
struct contender {
    std::string row;
    std::string name;
    double operations;              ///< in one call of the work
    std::function<work()> prepare;  ///< what needn't be measured
    int threads = 1;                ///< that do the work at once, each its own
};

std::vector<contender>& contenders();

inline bool enter(contender const& entered) {
    contenders().push_back(entered);
    return true;
}

/// What somebody's data take in memory: `make` gives them.
struct holder {
    std::string what;
    std::string name;
    double items;
    std::function<std::shared_ptr<void const>()> make;
};

std::vector<holder>& holders();

inline bool enter_held(holder const& entered) {
    holders().push_back(entered);
    return true;
}

// Streams over memory that is there already, so that no contender is measured by how it grows.

/// For the floors, which make the same calls: notes the sizes of the blocks that are written to it.
class noting_buffer : public std::streambuf {
public:
    std::vector<std::streamsize> sizes;
    std::string bytes;

private:
    std::streamsize xsputn(char const* data, std::streamsize size) override {
        sizes.push_back(size);
        bytes.append(data, static_cast<std::size_t>(size));
        return size;
    }
};

class memory_output : private std::streambuf, public std::ostream {
public:
    explicit memory_output(std::size_t capacity) : std::ostream(this), bytes_(capacity) { rewind(); }

    void rewind() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
    std::string written() const { return {pbase(), pptr()}; }
    char const* data() const { return bytes_.data(); }
    std::size_t size() const { return static_cast<std::size_t>(pptr() - pbase()); }

private:
    std::vector<char> bytes_;
};

class memory_input : private std::streambuf, public std::istream {
public:
    explicit memory_input(std::string bytes) : std::istream(this), bytes_(std::move(bytes)) { rewind(); }

    void rewind() {
        clear();
        setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
    }

private:
    std::string bytes_;
};

}  // namespace contest
