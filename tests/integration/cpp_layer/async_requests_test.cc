// SPDX-License-Identifier: Apache-2.0
// Requests that do not wait, from a loop over poll.
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "cpp_layer_switch_test.h"

namespace {

using port_mgr::async_requests;
using testing::ElementsAre;
using testing::UnorderedElementsAre;
using namespace std::chrono_literals;

constexpr async_requests::clock::duration patiently = 60s;
constexpr async_requests::clock::duration briefly = 100ms;

// A loop of a program's own.
class poll_loop {
  public:
    explicit poll_loop(const platform_dev::mts_handle &handle) : handle_(handle), requests(handle.get()) {}

    // Whether the descriptor is readable within so many milliseconds, or at once.
    [[nodiscard]] bool is_woken(int milliseconds = 0) const {
        pollfd waited{handle_.descriptor(), POLLIN, 0};
        return poll(&waited, 1, milliseconds) == 1;
    }

    // Turns until nothing is under way. A turn that was woken for nothing is counted.
    void run() {
        while (requests.under_way() > 0) {
            const bool woken = is_woken(requests.poll_timeout());
            if (requests.process() == 0 && woken) ++idle_turns;
        }
    }

    // Keeps how a request ended: its ports, or why not.
    auto note() {
        return [this](const auto &told) {
            if (!told) ended.push_back(told.why().words());
            if (told)
                for (const std::string &name : names_in(*told)) ended.push_back(name);
        };
    }

    void ask_for(const char *port, async_requests::clock::duration limit = patiently) {
        const auto sent = requests.get_port_info_range(range_of(port, port), limit, note());
        EXPECT_TRUE(sent) << sent.why().words();
    }

    std::vector<std::string> take_ended() { return std::exchange(ended, {}); }

  private:
    const platform_dev::mts_handle &handle_;

  public:
    async_requests requests;
    std::vector<std::string> ended;
    int idle_turns = 0;
};

class cpp_async_over_poll : public cpp_layer_switch_test {
  protected:
    // A Fibre Channel port is the port manager's, an Ethernet port another service's.
    void ask_both_services() {
        loop_.ask_for("fc1/1");
        loop_.ask_for("Ethernet4/1");
    }

    poll_loop loop_{handle_};
};

const std::string lost = "Connection reset by peer";

TEST_F(cpp_async_over_poll, several_are_under_way_over_two_services) {
    EXPECT_FALSE(loop_.is_woken());
    for (const char *const port : {"fc1/1", "Ethernet4/1", "fc1/2", "Ethernet4/2"}) loop_.ask_for(port);
    const std::vector<pm_if_index_range_t> ranges{range_of("fc3/1", "fc3/2")};
    EXPECT_TRUE(loop_.requests.get_port_info_brief(ranges, patiently, loop_.note()));
    EXPECT_TRUE(loop_.requests.get_next_port_info(index_of("Ethernet4/9"), patiently, loop_.note()));
    size_t all = 0;
    EXPECT_TRUE(loop_.requests.get_all_port_info_brief(patiently, [&](const auto &told) { all = told->size(); }));
    EXPECT_EQ(loop_.requests.under_way(), 7u);
    loop_.run();
    EXPECT_THAT(loop_.take_ended(),
                UnorderedElementsAre("fc1/1", "fc1/2", "fc3/1", "fc3/2", "Ethernet4/1", "Ethernet4/2", "Ethernet4/10"));
    EXPECT_EQ(all, 215u);
    EXPECT_FALSE(loop_.is_woken());
}

TEST_F(cpp_async_over_poll, what_is_called_asks_on) {
    const std::function<void(if_index_t)> walk = [&](if_index_t from) {
        EXPECT_TRUE(loop_.requests.get_next_port_info(from, patiently, [&](const auto &told) {
            loop_.note()(told);
            if (told && !told->empty() && loop_.ended.size() < 50) walk((*told)[0].if_index);
        }));
    };
    walk(0);
    loop_.run();
    std::vector<std::string> expected = names_in(*port_mgr::get_all_port_info_brief(handle()));
    expected.resize(50);
    EXPECT_EQ(loop_.take_ended(), expected);
}

TEST_F(cpp_async_over_poll, those_of_a_switch_that_is_killed_are_lost_and_later_ones_answered) {
    loop_.ask_for("fc1/1");
    loop_.run();
    switch_->stop();
    ask_both_services();
    ask_both_services();
    loop_.take_ended();
    restart(SIGKILL);
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), ElementsAre(lost, lost, lost, lost));
    ask_both_services();
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), UnorderedElementsAre("fc1/1", "Ethernet4/1"));
    EXPECT_FALSE(loop_.is_woken());
}

TEST_F(cpp_async_over_poll, what_is_called_for_a_lost_one_asks_again) {
    switch_->stop();
    for (const char *const port : {"fc1/1", "Ethernet4/1"}) {
        EXPECT_TRUE(loop_.requests.get_port_info_range(range_of(port, port), patiently, [&, port](const auto &told) {
            EXPECT_EQ(told.why().words(), lost);
            loop_.ask_for(port);
        }));
    }
    restart(SIGKILL);
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), UnorderedElementsAre("fc1/1", "Ethernet4/1"));
}

TEST_F(cpp_async_over_poll, those_of_a_switch_that_is_asked_to_end_are_answered_or_lost) {
    for (int round = 0; round < 5; ++round) {
        ask_both_services();
        restart(SIGTERM);
        loop_.run();
        const auto ended = loop_.take_ended();
        EXPECT_EQ(ended.size(), 2u);
        EXPECT_THAT(ended, testing::Each(testing::AnyOf("fc1/1", "Ethernet4/1", lost)));
    }
}

TEST_F(cpp_async_over_poll, answers_that_a_blocking_call_met_wake_the_loop) {
    EXPECT_FALSE(loop_.is_woken());
    loop_.ask_for("fc1/1");
    loop_.ask_for("fc1/2");
    EXPECT_THAT(names_in(*port_mgr::get_port_info_range(handle(), index_of("fc1/3"), index_of("fc1/3"))),
                ElementsAre("fc1/3"));
    EXPECT_TRUE(loop_.is_woken());
    EXPECT_EQ(loop_.requests.process(), 2u);
    EXPECT_THAT(loop_.take_ended(), ElementsAre("fc1/1", "fc1/2"));
    EXPECT_FALSE(loop_.is_woken());
}

TEST_F(cpp_async_over_poll, those_lost_before_a_blocking_call_went_through_say_so_at_their_deadline) {
    switch_->stop();
    loop_.ask_for("fc1/1", briefly);
    restart(SIGKILL);
    EXPECT_TRUE(port_mgr::get_port_info_range(handle(), index_of("fc1/3"), index_of("fc1/3")));
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), ElementsAre(lost));
}

TEST_F(cpp_async_over_poll, those_of_a_switch_that_stands_still_end_at_their_deadlines) {
    loop_.ask_for("fc1/1");
    loop_.run();
    loop_.take_ended();
    switch_->stop();
    const auto start = async_requests::clock::now();
    loop_.ask_for("Ethernet4/1", briefly);
    loop_.ask_for("fc1/1", briefly / 2);
    loop_.run();
    EXPECT_GE(async_requests::clock::now() - start, briefly);
    EXPECT_THAT(loop_.take_ended(), ElementsAre("Connection timed out", "Connection timed out"));
    EXPECT_EQ(loop_.idle_turns, 0);
    switch_->send(SIGCONT);
    loop_.ask_for("fc1/2");
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), ElementsAre("fc1/2"));
}

TEST_F(cpp_async_over_poll, answers_to_cancelled_ones_are_dropped) {
    const auto cancelled = loop_.requests.get_port_info_range(range_of("fc1/1", "fc1/1"), patiently, loop_.note());
    ASSERT_TRUE(cancelled);
    EXPECT_TRUE(loop_.requests.cancel(*cancelled));
    EXPECT_TRUE(loop_.is_woken(10'000));
    EXPECT_EQ(loop_.requests.process(), 0u);
    EXPECT_FALSE(loop_.is_woken());
    EXPECT_THAT(loop_.take_ended(), testing::IsEmpty());
}

// ---- beside a forked child

// Runs as a child; the end of the object waits for it, and looks at what it found.
class forked_child {
  public:
    template <typename Work>
    explicit forked_child(Work work) : pid_(fork()) {
        if (pid_ != 0) return;
        _exit(work() ? 0 : 1);
    }
    ~forked_child() {
        int status = -1;
        waitpid(pid_, &status, 0);
        EXPECT_EQ(status, 0);
    }
    forked_child(const forked_child &) = delete;
    forked_child &operator=(const forked_child &) = delete;

  private:
    pid_t pid_;
};

TEST_F(cpp_async_over_poll, a_child_has_a_loop_of_its_own) {
    ask_both_services();
    {
        const forked_child child([] {
            const platform_dev::mts_handle own;
            poll_loop loop(own);
            loop.ask_for("fc2/1");
            loop.ask_for("Ethernet4/2");
            loop.run();
            std::ranges::sort(loop.ended);
            return loop.ended == std::vector<std::string>{"Ethernet4/2", "fc2/1"};
        });
    }
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), UnorderedElementsAre("fc1/1", "Ethernet4/1"));
}

// The child has the sockets of the handle for as long as it lives.
TEST_F(cpp_async_over_poll, a_child_that_stays_wakes_nobody_when_the_switch_ends) {
    int gate[2];
    ASSERT_EQ(pipe2(gate, O_CLOEXEC), 0);
    EXPECT_FALSE(loop_.is_woken());
    ask_both_services();
    loop_.run();
    loop_.take_ended();
    const forked_child child([&] {
        char byte = 0;
        close(gate[1]);
        return read(gate[0], &byte, 1) == 0;
    });
    switch_->stop();
    ask_both_services();
    restart(SIGKILL);
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), ElementsAre(lost, lost));
    EXPECT_FALSE(loop_.is_woken());
    ask_both_services();
    loop_.run();
    EXPECT_THAT(loop_.take_ended(), UnorderedElementsAre("fc1/1", "Ethernet4/1"));
    EXPECT_FALSE(loop_.is_woken());
    for (const int end : gate) close(end);
}

}  // namespace
