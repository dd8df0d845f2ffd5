#pragma once

#include <istream>
#include <ostream>
#include <streambuf>

#include <cxxabi.h>

namespace velum::detail {

// What `write` and `read` of a standard stream come to: one call on its buffer, with the same state, exceptions and
// mask. These build a guard for each call, which does nothing unless another stream is tied to this one or it is
// flushed after each operation, and costs as much as the transfer of a short field. Only `gcount` isn't kept.

#if defined(__GLIBCXX__)
using cancellation = abi::__forced_unwind;  // of the thread, which nobody may stop
#else
struct cancellation {};  // nobody throws it
#endif

/// For a handler of what the buffer threw: it becomes the bad state, and goes on where the mask has that.
inline void note_failure_of_buffer(std::basic_ios<char>& stream) {
    try {
        stream.setstate(std::ios_base::badbit);
    } catch (std::ios_base::failure const&) {  // what the buffer threw goes on in its place
    }
    if ((stream.exceptions() & std::ios_base::badbit) != 0) {
        throw;
    }
}

inline bool guards_nothing(std::basic_ios<char> const& stream) {
    return stream.good() && stream.tie() == nullptr;
}

inline void write_block(std::basic_ostream<char>& stream, char const* data, std::streamsize size) {
    if (!guards_nothing(stream) || (stream.flags() & std::ios_base::unitbuf) != 0) {
        stream.write(data, size);
        return;
    }
    bool written = false;
    try {
        written = stream.rdbuf()->sputn(data, size) == size;
    } catch (cancellation&) {
        throw;
    } catch (...) {
        note_failure_of_buffer(stream);
        return;
    }
    if (!written) {
        stream.setstate(std::ios_base::badbit);
    }
}

/// Whether all of it came.
inline bool read_block(std::basic_istream<char>& stream, char* data, std::streamsize size) {
    if (!guards_nothing(stream)) {
        stream.read(data, size);
        return stream.gcount() == size;
    }
    bool came = false;
    try {
        came = stream.rdbuf()->sgetn(data, size) == size;
    } catch (cancellation&) {
        throw;
    } catch (...) {
        note_failure_of_buffer(stream);
        return false;
    }
    if (!came) {
        stream.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    }
    return came;
}

}  // namespace velum::detail
