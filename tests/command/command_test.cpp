#include "support/counting_object.hpp"
#include "support/failure.hpp"

#include <velum/testing/conformance.hpp>
#include <velum/velum.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace velum;
using support::journal;
using support::references;

class handler_t : public i_event_handler_t {
public:
    std::int32_t count = 0;
    bool query_interface(guid_t const&, void*) override { return false; }
    std::int32_t add_ref() override { return ++count; }
    std::int32_t release() override { return --count; }
};

/// Writes its name with + for `do_it`, - for `undo_it` and ! for its end; fails at doing when told to.
class recorder : public command_t {
public:
    recorder(journal& calls, std::string name, iptr<i_event_handler_t> const& handler = {})
        : command_t(handler), calls_(calls), name_(std::move(name)) {}
    recorder(recorder const&) = default;
    ~recorder() override { calls_ += name_ + "!"; }

    void do_it() override {
        calls_ += name_ + "+";
        if (fails) {
            throw std::range_error(name_);
        }
    }
    void undo_it() override { calls_ += name_ + "-"; }
    using command_t::event_handler;

    bool fails = false;

private:
    journal& calls_;
    std::string name_;
};

TEST(command, counts_itself_and_answers_its_interface_alone) {
    journal calls;
    iptr<i_command_t> command(new recorder(calls, "c"));
    for (iptr<i_command_t> const& each : {command, iptr<i_command_t>(new multi_command_t({}))}) {
        EXPECT_EQ(conformance::check_object(each.get(), {iid_command}), conformance::findings());
        EXPECT_FALSE(each.try_as<i_unknown_t>());
    }
    command = nullptr;
    EXPECT_EQ(calls, "c!");
}

TEST(command, holds_its_handler_through_copies_and_moves) {
    journal calls;
    handler_t handler, other;
    {
        recorder first(calls, "a", &handler), second(calls, "b", &other);
        first.add_ref();
        recorder copy(first), moved(std::move(first));
        EXPECT_EQ(handler.count, 3) << "a move is a copy";
        EXPECT_TRUE(first.event_handler().get() == &handler && moved.event_handler().get() == &handler);
        EXPECT_EQ(copy.add_ref(), 2);
        static_cast<command_t&>(second) = static_cast<command_t&&>(first);
        EXPECT_TRUE(handler.count == 4 && other.count == 0 && second.add_ref() == 2 && first.add_ref() == 2);
        first.command_t::operator=(*&first);
        EXPECT_TRUE(handler.count == 4 && first.add_ref() == 3);
    }
    EXPECT_EQ(handler.count, 0);
}

TEST(multi_command, runs_forwards_and_undoes_backwards) {
    journal calls;
    {
        iptr<recorder> const a(new recorder(calls, "a")), b(new recorder(calls, "b"));
        std::vector<iptr<i_command_t>> list{a.get(), b.get(), a.get()};
        list.emplace_back(new multi_command_t({b.get()}));
        iptr<i_command_t> const all(new multi_command_t(list));
        EXPECT_TRUE(references(a) == 5 && list.size() == 4);
        all->undo_it();
        all->do_it();
        EXPECT_EQ(calls, "b-a-b-a-a+b+a+b+");
        calls.clear();
        b->fails = true;
        EXPECT_EQ(support::failure_of([&] { all->do_it(); }), "std::range_error: b");
        EXPECT_EQ(calls, "a+b+") << "no rollback, and nothing behind the one that failed";
        calls.clear();
        iptr<i_command_t> const broken(new multi_command_t({a.get(), nullptr, a.get()}));
        EXPECT_EQ(support::failure_of([&] { broken->do_it(); }), "std::runtime_error: command is null");
        EXPECT_EQ(calls, "a+");
        multi_command_t({}).do_it();
    }
    calls.clear();
    { multi_command_t const last({new recorder(calls, "1"), new recorder(calls, "2"), new recorder(calls, "3")}); }
    EXPECT_EQ(calls, "1!2!3!");
}

}  // namespace
