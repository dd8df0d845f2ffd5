#pragma once

#include <velum/core/iptr.hpp>
#include <velum/core/unknown.hpp>

#include <cstring>
#include <map>
#include <string>
#include <utility>

namespace support {

/// What happened to several fakes, in one line: "a+ b? a-".
using journal = std::string;

/// A fake that counts its references and never dies. Each call leaves its name in the journal, with a `+` for
/// `add_ref`, a `-` for `release` and a `?` for `query_interface`.
class counting_object : public velum::i_unknown_t {
public:
    counting_object(journal& calls, std::string name) : calls_(calls), name_(std::move(name)) {}

    std::int32_t references = 0;
    std::map<velum::guid_t, velum::i_unknown_t*> answers;  ///< what `query_interface` finds
    void* asked_into = nullptr;                            ///< by the last `query_interface`

    bool query_interface(velum::guid_t const& iid, void* out) override {
        note("?");
        asked_into = out;
        auto const found = answers.find(iid);
        velum::i_unknown_t* const pointer = found == answers.end() ? nullptr : found->second;
        std::memcpy(out, &pointer, sizeof pointer);
        return pointer != nullptr && pointer->add_ref() > 0;
    }

    std::int32_t add_ref() override { return note("+"), ++references; }
    std::int32_t release() override { return note("-"), --references; }

private:
    void note(char const* call) { calls_ += name_ + call + " "; }

    journal& calls_;
    std::string name_;
};

/// The references on the object at `p`, by its own answers.
template <class Pointer>
std::int32_t references(Pointer const& p) {
    p->add_ref();
    return p->release();
}

/// An interface of an object that lies on the stack, which no `iptr` may hold.
template <class Interface>
velum::iptr<Interface> side_of(velum::i_unknown_t& object, velum::guid_t const& iid) {
    velum::iptr<Interface> side;
    object.query_interface(iid, &side);
    return side;
}

}  // namespace support
