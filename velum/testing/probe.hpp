#pragma once

#include <velum/core/counted.hpp>
#include <velum/core/guid.hpp>
#include <velum/core/interface_ids.hpp>
#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace velum::conformance {

/// What a check found, each a sentence that says which rule broke. Empty when all rules hold.
using findings = std::vector<std::string>;

/// Adds what isn't there yet.
inline void add(findings& found, findings const& more) {
    for (std::string const& each : more) {
        if (std::find(found.begin(), found.end(), each) == found.end()) {
            found.push_back(each);
        }
    }
}

/// Adds `broken`, a rule and how it broke, unless it `holds`.
inline void require(findings& found, bool holds, std::string const& broken) {
    if (!holds) {
        add(found, {broken});
    }
}

/// An interface that no class has.
inline constexpr guid_t iid_of_nobody{"{6E1C8B57-0F0A-4A55-9B7B-D1C8A1F3E204}"};

/// The references on an object, by its own answers.
inline std::int32_t references(i_unknown_t& object) {
    object.add_ref();
    return object.release();
}

/// An object of no class under test, on the stack: it counts its references and never dies.
class probe : public i_unknown_t {
public:
    std::int32_t count = 0;            ///< the references on it
    std::function<void()> on_release;  ///< called before each release

    bool query_interface(guid_t const& iid, void* out) override {
        return fill_slot(out, iid == iid_unknown ? this : nullptr);
    }
    std::int32_t add_ref() override { return ++count; }
    std::int32_t release() override {
        if (on_release) {
            on_release();
        }
        return --count;
    }
};

/// A controlling unknown, on the stack: all that it has but its identity is its part.
class aggregate : public probe {
public:
    iptr<i_unknown_t> part;  ///< may be null

    bool query_interface(guid_t const& iid, void* out) override {
        bool const asks_part = iid != iid_unknown && part;
        return asks_part ? part->query_interface(iid, out) : probe::query_interface(iid, out);
    }
};

/// Asks `from` for `iid`, into a slot that holds something, and watches slot and counts. References are expected to be
/// taken on `counted`.
inline iptr<i_unknown_t> ask(findings& found, i_unknown_t& from, i_unknown_t& counted, guid_t const& iid) {
    std::string const which = " (asked for " + iid.string() + ")";
    std::int32_t const before = references(counted);
    std::int32_t at_release = before;
    probe old;
    iptr<i_unknown_t> slot(&old);
    old.on_release = [&] { at_release = references(counted); };
    bool const result = from.query_interface(iid, &slot);
    old.on_release = nullptr;

    bool const is_old = slot.get() == &old;
    require(found, !is_old, "slot: a question leaves the old content in it" + which);
    require(found, old.count == (is_old ? 1 : 0), "slot: its old content isn't released, or not once" + which);
    require(found, at_release == before, "slot: its old content is released after the new pointer is taken" + which);
    if (is_old) {
        return nullptr;
    }
    require(found, result == static_cast<bool>(slot), "slot: the result doesn't say whether it is filled" + which);
    std::int32_t const expected = before + (slot ? 1 : 0);
    std::int32_t after = references(counted);
    require(found, after == expected,
            "counts: a question takes " + std::to_string(after - before) + " references, not " +
                std::to_string(expected - before) + which);
    for (; after < expected; ++after) {
        counted.add_ref();  // or the checks would outlive the object
    }
    return slot;
}

}  // namespace velum::conformance
