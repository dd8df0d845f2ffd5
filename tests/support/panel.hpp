#pragma once

#include <velum/velum.hpp>

#include <atomic>

namespace support {

/// A class as another module makes it from the library's building blocks; a boxed string is a part of each panel.
class panel_t : public velum::flat_t<panel_t, velum::i_unknown_t> {
public:
    static inline std::atomic<int> made = 0, alive = 0;

    panel_t() { ++made, ++alive; }
    panel_t(panel_t const&) = delete;
    ~panel_t() override { --alive; }

    /// In two steps: a part must not count on a panel that nobody holds yet.
    static velum::iptr<i_unknown_t> make() {
        velum::iptr<panel_t> const panel(new panel_t);
        velum::basic_string_t::create(panel.get(), "part", velum::iid_unknown, &panel->part_);
        return panel.get();
    }

    bool query_interface(velum::guid_t const& iid, void* out) override {
        return flat_t::query_interface(iid, out) || (iid == velum::iid_string && part_->query_interface(iid, out));
    }

private:
    friend velum::object_access;

    velum::iptr<i_unknown_t> part_;
    std::int32_t ref_count = 0;
};

}  // namespace support
