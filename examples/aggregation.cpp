// Two objects that look like one from outside: the outer one hands out an interface of the inner one as its own.

#include <velum/velum.hpp>

#include <iostream>

using namespace velum;

class i_bell_t : public i_unknown_t {
public:
    virtual int ring() = 0;
};
template <>
inline constexpr guid_t velum::iid_of<i_bell_t>{"{9812604A-94F7-405E-905B-2D0379C639CB}"};

/// A bell that can be a part of another object.
class bell_t : public implements_aggregatable<bell_t, i_bell_t> {
public:
    static constexpr guid_t class_id{"{C28C12C8-0008-4A89-A82B-AD927F26B165}"};
    static constexpr char const* class_name = "bell";

    int ring() override { return ++rings_; }

private:
    int rings_ = 0;
};

class i_door_t : public i_unknown_t {
public:
    virtual bool is_open() const = 0;
};
template <>
inline constexpr guid_t velum::iid_of<i_door_t>{"{63C1BE8A-769B-4A14-A111-68E40A0C185F}"};

/// A door that has a bell without a line of the bell's code.
class door_t : public implements<door_t, i_door_t> {
public:
    /// The part is made when somebody holds the whole, and only the whole keeps the part's own i_unknown_t.
    static iptr<i_door_t> with_bell() {
        auto const door = velum::make<door_t>();
        bell_t::create_function(door.get(), nullptr, iid_unknown, &door->bell_);
        return door.as<i_door_t>();
    }

    bool is_open() const override { return false; }

    /// What the door doesn't have the bell may.
    bool query_interface(guid_t const& iid, void* out) override {
        return implements::query_interface(iid, out) || (bell_ && bell_->query_interface(iid, out));
    }

private:
    iptr<i_unknown_t> bell_;
};

int main() {
    // The reference on the bell keeps the door that it belongs to.
    iptr<i_bell_t> const bell = door_t::with_bell().as<i_bell_t>();
    int const rings = bell->ring() + bell->ring();

    auto const door = bell.as<i_door_t>();
    bool const is_one = bell.as<i_unknown_t>() == door.as<i_unknown_t>() && door.as<i_bell_t>() == bell;
    std::cout << "from the bell to its door, which is " << (door->is_open() ? "open\n" : "closed\n")
              << (is_one ? "one object\n" : "two objects\n");

    // Alone it is a bell and nothing else.
    auto const alone = make<bell_t>();
    std::cout << (alone.try_as<i_door_t>() ? "a door\n" : "no door\n");
    return rings == 3 && is_one && !alone.try_as<i_door_t>() ? 0 : 1;
}

// It prints:
//
//     from the bell to its door, which is closed
//     one object
//     no door
