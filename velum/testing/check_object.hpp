#pragma once

#include <velum/testing/probe.hpp>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace velum::conformance {

/// The relations between the interfaces of an object: which leads to which.
class relations {
public:
    /// Asks each interface for each; findings go to `found`.
    relations(findings& found, iptr<i_unknown_t> const& object, std::set<guid_t> const& interfaces)
        : found_(found), object_(object), ids_(interfaces.begin(), interfaces.end()), sides_(ids_.size()) {
        find_sides();
        for (auto const& side : sides_) {
            std::vector<bool>& row = leads_.emplace_back();
            for (guid_t const& id : ids_) {
                row.push_back(side && ask(found_, *side, *object_, id));
            }
        }
    }

    /// Looks at what was answered.
    void check() const {
        for (std::size_t a = 0; a < ids_.size(); ++a) {
            require(found_, static_cast<bool>(sides_[a]),
                    "query_interface: the object doesn't have the interface " + ids_[a].string());
            if (sides_[a]) {
                require(found_, leads_[a][a], "query_interface: not reflexive: " + path({a, a}) + " fails");
                require(found_, !ask(found_, *sides_[a], *object_, iid_of_nobody),
                        "query_interface: " + ids_[a].string() + " answers for an interface that no class has");
                check_from(a);
            }
        }
    }

private:
    // From the object itself, or, where that refuses, from another side.
    void find_sides() {
        for (std::size_t a = 0; a < ids_.size(); ++a) {
            sides_[a] = ask(found_, *object_, *object_, ids_[a]);
        }
        for (std::size_t a = 0; a < ids_.size(); ++a) {
            for (std::size_t b = 0; b < ids_.size() && !sides_[a]; ++b) {
                sides_[a] = sides_[b] ? ask(found_, *sides_[b], *object_, ids_[a]) : nullptr;
            }
        }
    }

    void check_from(std::size_t a) const {
        auto const identity = [&](std::size_t of) { return ask(found_, *sides_[of], *object_, iid_unknown); };
        for (std::size_t b = 0; b < ids_.size(); ++b) {
            if (!sides_[b]) {
                continue;
            }
            require(found_, !leads_[a][b] || leads_[b][a],
                    "query_interface: not symmetric: " + path({a, b}) + " works, " + path({b, a}) + " fails");
            require(found_, a == b || ids_[a] == iid_unknown || ids_[b] == iid_unknown || sides_[a] != sides_[b],
                    "query_interface: one pointer stands for " + ids_[a].string() + " and " + ids_[b].string());
            require(found_, identity(a) == identity(b),
                    "identity: " + ids_[a].string() + " and " + ids_[b].string() +
                        " don't give the same pointer for iid_unknown");
            for (std::size_t c = 0; c < ids_.size(); ++c) {
                require(found_, !(leads_[a][b] && leads_[b][c]) || leads_[a][c],
                        "query_interface: not transitive: " + path({a, b, c}) + " works, " + path({a, c}) + " fails");
            }
        }
    }

    std::string path(std::vector<std::size_t> const& places) const {
        std::string text;
        for (std::size_t const place : places) {
            text += (text.empty() ? "" : " -> ") + ids_[place].string();
        }
        return text;
    }

    findings& found_;
    iptr<i_unknown_t> object_;
    std::vector<guid_t> ids_;
    std::vector<iptr<i_unknown_t>> sides_;
    std::vector<std::vector<bool>> leads_;
};

/// Checks an object that has these interfaces: that `query_interface` is reflexive, symmetric and transitive over them,
/// that identity is one pointer, that slots are treated as `i_unknown_t` says, and that counts balance.
inline findings check_object(iptr<i_unknown_t> const& object, std::set<guid_t> const& interfaces) {
    findings found;
    std::int32_t const before = references(*object);
    std::int32_t const first = object->add_ref(), second = object->add_ref();
    std::int32_t const third = object->release(), last = object->release();
    require(found, second == first + 1 && third == first && last == first - 1,
            "counts: add_ref and release don't give the count, up and down by one");
    relations(found, object, interfaces).check();
    require(found, references(*object) == before, "counts: references are left when all interfaces are let go");
    return found;
}

}  // namespace velum::conformance
