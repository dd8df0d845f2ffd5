#pragma once

#include <velum/testing/check_object.hpp>
#include <velum/testing/check_round_trip.hpp>
#include <velum/values/any_map.hpp>

#include <array>
#include <set>
#include <sstream>
#include <string>

namespace velum::conformance {

/// A class as a factory knows it, under its checks.
class class_checks {
public:
    /// Findings go to `found`.
    class_checks(findings& found, iptr<i_object_factory_t> const& factory, guid_t const& clsid)
        : found_(found), factory_(factory), clsid_(clsid) {}

    /// Runs them all.
    void check() {
        if (!factory_->create_object(clsid_, nullptr, nullptr, iid_unknown, &object_) || !object_) {
            add(found_, {"create: no object comes for iid_unknown"});
            return;
        }
        require(found_, references(*object_) == 1,
                "create: a new object comes with more than the reference in the slot");
        require(found_, slot(object_, iid_unknown) == object_,
                "create: iid_unknown isn't what the object answers to it");
        check_record();
        add(found_, check_object(object_, interfaces_));
        check_creation();
        check_under_control(
            [&](i_unknown_t* outer, iptr<i_unknown_t>& out) { return create(outer, iid_unknown, out); });
        if (slot const side = ask(found_, *object_, *object_, iid_serializable)) {
            auto const& serializable = static_cast<i_serializable_t const&>(*side);
            require(found_, serializable.clsid() == clsid_, "record: clsid() isn't the identifier of the class");
            check_rebuilding(serializable);
        }
    }

private:
    using slot = iptr<i_unknown_t>;

    bool create(i_unknown_t* outer, guid_t const& iid, slot& out) {
        return factory_->create_object(clsid_, outer, nullptr, iid, &out);
    }

    void check_record() {
        any_map const& record = factory_->class_info(clsid_);
        std::array const known{iid_unknown,    iid_unknown_map,  iid_uany_map,     iid_string,
                               iid_serializer, iid_serializable, iid_ostream,      iid_object_factory,
                               iid_istream,    iid_command,      iid_event_handler};
        guid_t clsid = clsid_;
        any_map_try_get(record, "clsid", clsid);
        require(found_, clsid == clsid_, "record: \"clsid\" isn't the identifier of the class");
        auto const name = record.find("class_name");
        require(found_, name == record.end() || boost::any_cast<std::string>(&name->second) != nullptr,
                "record: \"class_name\" isn't a std::string");
        bool const lists = any_map_try_get(record, "supported_interfaces", interfaces_);
        for (guid_t const& iid : known) {
            bool const has = static_cast<bool>(ask(found_, *object_, *object_, iid));
            if (has && !lists) {
                interfaces_.insert(iid);
            }
            require(found_, !has || interfaces_.count(iid) != 0,
                    "record: \"supported_interfaces\" lacks " + iid.string() + ", which the object has");
        }
    }

    void check_creation() {
        for (guid_t const& iid : interfaces_) {
            slot made;
            bool const is_made = create(nullptr, iid, made) && made;
            require(found_, is_made, "create: no object comes for " + iid.string());
            if (is_made) {
                require(found_, slot(made, iid) == made,
                        "create: what comes for " + iid.string() + " is another interface");
                require(found_, references(*made) == 1,
                        "create: a new object comes with more than the reference in the slot (asked for " +
                            iid.string() + ")");
            }
        }
        probe old;
        slot out(&old);
        bool const made = create(nullptr, iid_of_nobody, out);
        require(found_, !made && !out && old.count == 0,
                "create: an interface that the class doesn't have must be refused, and the slot emptied");
        aggregate outer;
        for (guid_t const& iid : interfaces_) {
            slot kept(&old);
            bool const hands_out = iid != iid_unknown && create(&outer, iid, kept);
            require(
                found_, !hands_out && kept.get() == &old && old.count == 1,
                "create: under a controlling unknown " + iid.string() + " must be refused, and the slot left alone");
        }
    }

    /// `make` makes an object under a controlling unknown, or refuses it.
    template <class Make>
    void check_under_control(Make make) {
        probe old;
        aggregate outer;
        slot out(&old);
        if (!make(&outer, out)) {
            require(found_, out.get() == &old && old.count == 1,
                    "aggregate: a refused controlling unknown must leave the slot alone");
            return;
        }
        require(found_, old.count == 0, "aggregate: the old content of the slot isn't released");
        require(found_, static_cast<bool>(out), "aggregate: the result is true, and the slot empty");
        require(found_, outer.count == 0, "aggregate: the controlling unknown must not be counted");
        if (out) {
            check_part(outer, out);
        }
    }

    void check_part(aggregate& outer, slot const& part) {
        require(found_, slot(part, iid_unknown) == part, "aggregate: the part's own iid_unknown isn't the part");
        for (guid_t const& iid : interfaces_) {
            slot const side = iid == iid_unknown ? nullptr : ask(found_, *part, outer, iid);
            require(found_, !side || !slot(side, iid),
                    "aggregate: a question to " + iid.string() + " doesn't go to the controlling unknown");
        }
        require(found_, references(*part) == 1, "aggregate: an interface of the part counts on the part");
        outer.part = part;
        for (std::string const& each : check_object(&outer, interfaces_)) {
            add(found_, {"aggregate: " + each});
        }
    }

    void check_rebuilding(i_serializable_t const& object) {
        std::ostringstream written;
        object.serialize_obj(writer_on(written));
        auto const rebuild = [&](i_unknown_t* outer, slot& out) {
            std::istringstream stream(written.str());
            stream.exceptions(std::ios::failbit | std::ios::badbit);
            bool const made = factory_->deserialize_object(clsid_, outer, reader_on(stream, factory_), out);
            require(found_, !made || stream.rdbuf()->in_avail() <= 0,
                    "deserialize function: it leaves bytes of the construction stage unread");
            return made;
        };
        slot rebuilt;
        if (!rebuild(nullptr, rebuilt) || !rebuilt) {
            add(found_, {"deserialize function: it makes no object"});
            return;
        }
        require(found_, references(*rebuilt) == 1,
                "deserialize function: a new object comes with more than the reference in the slot");
        auto const stored = rebuilt.try_as<i_serializable_t>();
        require(found_, stored && stored->clsid() == clsid_,
                "deserialize function: it makes an object of another class");
        add(found_, check_object(rebuilt, interfaces_));
        check_under_control(rebuild);
    }

    findings& found_;
    iptr<i_object_factory_t> factory_;
    guid_t clsid_;
    iptr<i_unknown_t> object_;
    std::set<guid_t> interfaces_;
};

/// Checks the class that is registered in `factory` under `clsid`: its new objects and those that it makes for a
/// stream, by `check_object`; what `create` refuses and what becomes of the slot then; the same as a part of an
/// aggregate, if the class can be one; and that its record tells the truth. A record without "supported_interfaces" is
/// taken to list those of the library's interfaces that the object has. The create function gets no parameters.
///
///     factory->register_class(note_t::class_info());
///     for (std::string const& finding : velum::conformance::check_class(factory, note_t::class_id)) { ... }
inline findings check_class(iptr<i_object_factory_t> const& factory, guid_t const& clsid) {
    findings found;
    try {
        class_checks(found, factory, clsid).check();
    } catch (std::exception const& failure) {
        add(found, {std::string("failed: ") + failure.what()});
    }
    return found;
}

}  // namespace velum::conformance
