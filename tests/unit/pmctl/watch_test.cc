// SPDX-License-Identifier: Apache-2.0
// Watching a scripted switch, with a clock that a test moves.
#include "watch/watch.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <functional>
#include <nlohmann/json.hpp>

#include "failure.h"
#include "fixed_records.h"
#include "outcome.h"
#include "scripted_switch.h"

namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

// Lets a step of the test happen before each drawing, and is over after the last one.
class stepped_surroundings : public pmctl::watch_surroundings {
  public:
    std::vector<std::function<void()>> steps;
    pmctl::terminal is_screen;
    std::string write_failure;

    [[nodiscard]] pmctl::terminal screen() const override { return is_screen; }
    [[nodiscard]] pmctl::steady_time now() const override { return clock; }
    [[nodiscard]] std::string time_of_day() const override { return "12:00:00"; }
    [[nodiscard]] bool is_over() const override { return over || the_switch.asked.size() >= last_question; }

    void wait_until(pmctl::steady_time when, bool on_screen) override {
        waits.push_back(std::chrono::duration_cast<milliseconds>(when.time_since_epoch()).count());
        const bool is_resized = on_screen && waits.size() == resized_wait;
        clock = std::max(clock, is_resized ? when - milliseconds(500) : when);
        if (waits.size() > steps.size())
            over = true;
        else
            steps[waits.size() - 1]();
    }

    std::string write(const std::string &text) override {
        drawings.push_back(text);
        return write_failure;
    }

    void write_last(const std::string &text) override { last_words.push_back(text); }

    void tell(const std::string &message) override { told.push_back(message); }

    pmctl::steady_time clock{seconds(100)};
    bool over = false;
    size_t resized_wait = 0;          // counted from 1: the one that ends half a second early
    size_t last_question = SIZE_MAX;  // the one that is interrupted
    std::vector<int64_t> waits;
    std::vector<std::string> drawings;
    std::vector<std::string> last_words;
    std::vector<std::string> told;
};

class watch : public testing::Test {
  protected:
    void SetUp() override {
        the_switch = {};
        the_switch.brief_ports = {bare_brief_port()};
        the_switch.brief_ports[0].oper_state = 1;
    }

    void TearDown() override {
        EXPECT_EQ(the_switch.open_handles, 0);
        EXPECT_EQ(the_switch.undropped_messages, 0);
    }

    int run(std::vector<const char *> words = {"show", "interface", "brief", "--watch", "2"}) {
        words.insert(words.begin(), "pmctl");
        return pmctl::watch(pmctl::parse_command_line(static_cast<int>(words.size()), words.data()), around_);
    }

    static void set_state(uint8_t state) { the_switch.brief_ports[0].oper_state = state; }

    stepped_surroundings around_;
};

const std::string up_row = "mgmt0      -           -          up     down    --    -             -\n";
const std::string header = "Interface  Admin mode  Oper mode  State  Reason  Gbps  Port channel  VSAN\n";

TEST_F(watch, marks_what_changed_since_the_drawing_before) {
    around_.steps = {[] {}, [] {}, [] { set_state(2); }, [] {}};
    EXPECT_EQ(run(), 0);
    const std::string down_row = "mgmt0      -           -          down*  down    --    -             -\n";
    ASSERT_THAT(around_.drawings, SizeIs(4));
    EXPECT_EQ(around_.drawings[0], header + up_row);
    EXPECT_EQ(around_.drawings[1], "\n" + header + up_row);
    EXPECT_THAT(around_.last_words, IsEmpty());
    EXPECT_EQ(around_.drawings[2], "\n" + header + down_row);
    EXPECT_THAT(around_.drawings[3], Not(HasSubstr("*")));
    EXPECT_THAT(around_.told, IsEmpty());
}

TEST_F(watch, keeps_to_its_times) {
    around_.steps = {[] {}, [] {}, [this] { around_.clock += milliseconds(700); },
                     [this] { around_.clock += milliseconds(5100); }, [] {}};
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(around_.waits, ElementsAre(100000, 102000, 104000, 106000, 112000, 114000));
}

TEST_F(watch, draws_a_screen_of_another_size_without_losing_its_times) {
    around_.is_screen = {true, 80, 24};
    around_.resized_wait = 2;
    around_.steps = {[] {}, [this] { around_.is_screen.height = 2; }, [] {}, [] {}};
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(around_.waits, ElementsAre(100000, 102000, 102000, 104000, 106000));
    ASSERT_THAT(around_.drawings, SizeIs(4));
    EXPECT_THAT(around_.drawings[1], EndsWith("more lines"));
}

TEST_F(watch, takes_fractions_of_a_second) {
    around_.steps = {[] {}, [] {}};
    EXPECT_EQ(run({"show", "interface", "brief", "--watch", "0.25"}), 0);
    EXPECT_THAT(around_.waits, ElementsAre(100000, 100250, 100500));
}

TEST(next_drawing, is_a_whole_number_of_intervals_away) {
    const pmctl::steady_time start{seconds(10)};
    const auto next = [start](milliseconds interval, milliseconds later) {
        return std::chrono::duration_cast<milliseconds>(pmctl::next_drawing(start, interval, start + later) - start)
            .count();
    };
    EXPECT_EQ(next(seconds(2), milliseconds(0)), 2000);
    EXPECT_EQ(next(seconds(2), milliseconds(1999)), 2000);
    EXPECT_EQ(next(seconds(2), milliseconds(2000)), 4000);
    EXPECT_EQ(next(seconds(2), milliseconds(7001)), 8000);
    EXPECT_EQ(next(milliseconds(100), milliseconds(250)), 300);
    EXPECT_EQ(next(seconds(2), milliseconds(-1)), 0);
}

TEST_F(watch, draws_over_a_screen_under_a_heading) {
    around_.is_screen = {true, 80, 24};
    around_.steps = {[] {}, [] { set_state(2); }};
    EXPECT_EQ(run(), 0);
    ASSERT_THAT(around_.drawings, SizeIs(2));
    EXPECT_THAT(around_.drawings[0],
                StartsWith("\033[H\033[KEvery 2s: pmctl show interface brief --watch 2   12:00:00\n"
                           "\033[K\n\033[KInterface  "));
    EXPECT_THAT(around_.drawings[0], HasSubstr("\033[32mup\033[0m"));
    EXPECT_THAT(around_.drawings[1], HasSubstr("\033[31;7mdown\033[0m"));
    EXPECT_THAT(around_.last_words, ElementsAre("\033[0m\n\033[J"));
}

TEST_F(watch, goes_on_when_the_switch_goes_away_and_comes_back) {
    around_.steps = {[] {}, [] { the_switch.request_status = ETIMEDOUT; },
                     [] {
                         the_switch.request_status = 0;
                         set_state(2);
                     }};
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(around_.told, ElementsAre("all interfaces: Connection timed out"));
    ASSERT_THAT(around_.drawings, SizeIs(3));
    EXPECT_EQ(around_.drawings[0], header + up_row);
    EXPECT_EQ(around_.drawings[1], "");
    // compared with what was last seen
    EXPECT_THAT(around_.drawings[2], StartsWith("\n" + header));
    EXPECT_THAT(around_.drawings[2], HasSubstr("down*"));
}

TEST_F(watch, marks_nothing_when_the_switch_comes_late) {
    the_switch.request_status = ETIMEDOUT;
    around_.steps = {[] {}, [] { the_switch.request_status = 0; }};
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(around_.drawings.back(), header + up_row);
}

TEST_F(watch, shows_messages_on_the_screen) {
    around_.is_screen = {false, 80, 24};
    the_switch.request_status = ETIMEDOUT;
    around_.steps = {[] {}};
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(around_.told, IsEmpty());
    EXPECT_THAT(around_.drawings.at(0), HasSubstr("\033[Jpmctl: all interfaces: Connection timed out"));
}

TEST_F(watch, prints_one_json_document_each_time_without_marks) {
    around_.is_screen = {true, 80, 24};
    around_.steps = {[] {}, [] { set_state(2); }};
    EXPECT_EQ(run({"show", "interface", "brief", "--watch=2", "--json"}), 0);
    ASSERT_THAT(around_.drawings, SizeIs(2));
    for (const std::string &each : around_.drawings) {
        EXPECT_THAT(each, StartsWith("{\n  \"interfaces\": [\n"));
        EXPECT_THAT(each, EndsWith("\n}\n"));
    }
    EXPECT_THAT(around_.drawings[1], HasSubstr("\"oper_state\": 2,"));
    EXPECT_THAT(around_.last_words, IsEmpty());
}

// What the counters of a port have reached at a drawing.
void count_frames(uint64_t frames) {
    pm_eth_stats_t stats{};
    stats.result = 1;
    stats.traffic[PM_ETH_TRAFFIC_TX].frames = frames;
    the_switch.counters["Ethernet2/1"] = {0, 0, stats};
}

json transmitted_a_second(const std::string &document) {
    return json::parse(document)["interfaces"].at(0).at("tx_frames_per_second");
}

TEST_F(watch, measures_rates_from_drawing_to_drawing) {
    the_switch.brief_ports[0].if_index = index_named("Ethernet2/1");
    around_.steps = {[] { count_frames(1000); }, [] { count_frames(1000); }, [] { count_frames(UINT64_MAX / 4); },
                     [] { the_switch.counters.clear(); }, [] { count_frames(0); }};
    EXPECT_EQ(run({"show", "interface", "counters", "--watch", "1", "--json"}), 0);
    ASSERT_THAT(around_.drawings, SizeIs(5));
    EXPECT_TRUE(transmitted_a_second(around_.drawings[0]).is_null());
    EXPECT_EQ(transmitted_a_second(around_.drawings[1]), 0);
    EXPECT_GT(transmitted_a_second(around_.drawings[2]), 1000000u);
    EXPECT_THAT(around_.told, ElementsAre("Ethernet2/1: its line card does not answer"));
    EXPECT_EQ(transmitted_a_second(around_.drawings[4]), 0) << "it began again";
}

TEST_F(watch, begins_to_measure_with_each_run) {
    the_switch.brief_ports[0].if_index = index_named("Ethernet2/1");
    count_frames(1000);
    for (int again = 0; again < 2; ++again) {
        around_ = {};
        around_.steps = {[] {}};
        EXPECT_EQ(run({"show", "interface", "counters", "--watch", "1"}), 0);
        EXPECT_THAT(around_.drawings.at(0), HasSubstr("\nTransmitted\nInterface    Bytes/s  Frames/s  Errors/s  Bytes  "
                                                      "Frames  Unicast  Multicast  Broadcast  Pause  Errors  Drops\n"
                                                      "Ethernet2/1  -        -         -         0      1000    0"));
    }
}

TEST_F(watch, asks_nothing_when_it_is_over) {
    around_.steps = {[] {}, [this] { around_.over = true; }};
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(the_switch.asked, SizeIs(1));
}

TEST_F(watch, draws_nothing_from_a_question_that_was_interrupted) {
    around_.steps = {[] {}, [] { the_switch.request_status = EINTR; }};
    around_.last_question = 2;
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(the_switch.asked, SizeIs(2));
    EXPECT_THAT(around_.drawings, SizeIs(1));
    EXPECT_THAT(around_.told, IsEmpty());
}

TEST_F(watch, ends_when_the_output_cannot_be_written) {
    around_.write_failure = "cannot write the output: No space left on device";
    around_.steps = {[] {}, [] {}};
    EXPECT_EQ(run(), 1);
    EXPECT_THAT(around_.told, ElementsAre("cannot write the output: No space left on device"));
    EXPECT_THAT(around_.drawings, SizeIs(1));
}

TEST_F(watch, refuses_a_wrong_command_line_without_drawing) {
    for (const unsigned height : {0u, 24u}) {
        around_ = {};
        around_.is_screen.height = height;
        around_.steps = {[] {}, [] {}};
        EXPECT_EQ(run({"show", "interface", "fcx1", "--watch", "1"}), 2);
        EXPECT_THAT(around_.told, ElementsAre(StartsWith("not an interface name: fcx1")));
        EXPECT_THAT(around_.drawings, IsEmpty());
    }
    EXPECT_THROW(run({"show", "interface", "--watch", "0"}), pmctl::usage_error);
    EXPECT_THROW(run({"show", "interface", "--watch", "soon"}), pmctl::usage_error);
}

}  // namespace
