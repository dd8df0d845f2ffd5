#pragma once

#include "contest.hpp"

#include <QtCore/QBuffer>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

// What the rows have in common whose work is to write data to a stream and to read them back. What is read is new each
// time, and destroyed within the work, by everybody.

namespace contest {

/// What is stored. It has parts whose memory is compared, unless their name is empty.
struct stored {
    std::string name;
    double operations;
    std::size_t room;  ///< bytes, at least those that anybody writes
    std::string part{};
    double parts = 0;
};

inline void expect(bool complete) {
    if (!complete) {
        throw std::logic_error("a part of what was stored is missing");
    }
}

template <class Make>
auto keep(Make make) {
    return std::shared_ptr<decltype(make()) const>(new auto(make()));
}

/// Enters who writes what `make` gives to a sink, and reads it from a source. `read` tells whether it was complete.
///
/// A reader's bytes come by way of a sink as large as a writer's. When that is freed, the C library decides to keep as
/// much freed memory, so a reader finds the heap alike whoever was measured before.
template <class Sink = memory_output, class Source = memory_input, class Make, class Write, class Read>
bool enter_storing(stored const& what, std::string const& name, Make make, Write write, Read read) {
    if (!what.part.empty()) {
        enter_held({what.part, name, what.parts, [make] { return keep(make); }});
    }
    enter({"write " + what.name, name, what.operations, [=] {
               return work([out = std::make_shared<Sink>(what.room), from = keep(make), write] {
                   out->rewind();
                   write(*out, *from);
                   expect(out->good());
               });
           }});
    return enter({"read " + what.name, name, what.operations, [=] {
                      Sink out(what.room);
                      write(out, *keep(make));
                      return work([in = std::make_shared<Source>(out.written()), read] {
                          in->rewind();
                          expect(read(*in));
                      });
                  }});
}

/// The sink and the source of Qt. It grows where a stream fails.
class qt_device : public QBuffer {
public:
    explicit qt_device(std::size_t capacity) : qt_device(QByteArray(static_cast<int>(capacity), '\0')) {}
    explicit qt_device(QByteArray const& bytes) : room_(bytes.size()) {
        setData(bytes);
        open(ReadWrite);
    }

    void rewind() { seek(0); }
    bool good() const { return pos() <= room_; }
    QByteArray written() const { return data().left(static_cast<int>(pos())); }

private:
    qint64 room_;
};

}  // namespace contest
