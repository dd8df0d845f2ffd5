#pragma once

#include <velum/velum.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace support {

/// A stream object of both directions over a string: what is written goes to its end, what is read comes from
/// `position` on.
class recording_stream : public velum::flat_t<recording_stream, velum::i_istream_t, velum::i_ostream_t> {
public:
    explicit recording_stream(std::string content = {}) : bytes(std::move(content)) {}

    std::string bytes;
    std::size_t position = 0;
    std::string calls;                 ///< "4 16 tell ": the size of each transfer, the name of anything else
    int transfers_left = -1;           ///< at 0 a transfer throws; below it there is no limit
    bool can_tell = true;              ///< without it the position is always -1
    bool stands_still = false;         ///< a read that falls short leaves the position where it was
    bool ended = false;                ///< a read fell short, so there is no position, as in a standard stream
    std::shared_ptr<void> last_words;  ///< goes with the stream

    long long tellg() override {
        calls += "tell ";
        return can_tell && (!ended || stands_still) ? static_cast<long long>(position) : -1;
    }
    long long tellp() override { return calls += "tell ", static_cast<long long>(bytes.size()); }
    void seekg(long long, int) override { calls += "seek "; }
    void seekp(long long, int) override { calls += "seek "; }
    void flush() override { calls += "flush "; }

    void read(char* data, long long size) override {
        std::size_t const there = std::min(transfer(size), bytes.size() - position);
        std::copy_n(bytes.data() + position, there, data);
        position += there;
        ended = ended || there != static_cast<std::size_t>(size);
    }

    void write(char const* data, long long size) override { bytes.append(data, transfer(size)); }

private:
    friend velum::object_access;

    std::size_t transfer(long long size) {
        if (transfers_left-- == 0) {
            throw std::runtime_error("stream failed");
        }
        calls += std::to_string(size) + " ";
        return static_cast<std::size_t>(size);
    }

    std::int32_t ref_count = 0;
};

using recorded = velum::iptr<recording_stream>;

}  // namespace support
