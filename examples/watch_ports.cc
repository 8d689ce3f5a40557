// SPDX-License-Identifier: Apache-2.0
// Watches all ports of the switch and prints a line for each change, until SIGTERM or SIGINT:
//     watch_ports [MILLISECONDS]
// One thread, one loop over epoll. A timer begins a round: the names of all ports, then their records in pages, several
// of them under way at once. No call waits, and a switch that is gone is asked again in the next round.
#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>
#include <unistd.h>
#include <platform_dev/mts_handle.hpp>
#include <port_mgr/port_manager.hpp>

#include <array>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

namespace {

constexpr port_mgr::paging paging{.ports_of_page = 16, .pages_under_way = 4};
constexpr auto time_limit = std::chrono::seconds(2);

std::string state_of(const pm_port_info_t &port) {
    const std::string state = port_state_string(port.oper_state);
    return port.oper_state == 2 ? state + " (" + port_state_reason_string(port.state_reason, 0) + ")" : state;
}

std::string speed_of(const pm_port_info_t &port) {
    std::array<char, 80> text{};
    return port_speed_string(port.oper_speed, text.data());
}

std::string link_failures_of(const pm_port_info_t &port) { return std::to_string(port.link_error_count[0]); }

// What is watched: another line here watches another member.
constexpr struct {
    const char *name;
    std::string (*words)(const pm_port_info_t &port);
} watched[] = {{"state", state_of}, {"speed", speed_of}, {"link failures", link_failures_of}};

class port_watch {
  public:
    port_watch(mts_handle_t handle, FILE *lines) : requests_(handle), lines_(lines) {}

    // How long the loop may wait, as epoll_wait takes it.
    [[nodiscard]] int poll_timeout() const { return requests_.poll_timeout(); }

    // Begins a round, unless the one before it takes longer than the timer.
    void begin_round() {
        if (is_round_) return;
        is_round_ = true;
        failure_ = {};
        pages_.clear();
        next_page_ = 0;
        found_.clear();
        note(requests_.get_all_port_info_brief(time_limit, [this](auto ports) { plan_pages(std::move(ports)); }));
    }

    // Takes the answers that there are, and asks for more.
    void process() {
        requests_.process();
        while (failure_.ok() && next_page_ < pages_.size() && requests_.under_way() < paging.pages_under_way)
            note(requests_.get_port_info_range(pages_[next_page_++], time_limit,
                                               [this](auto ports) { keep(std::move(ports)); }));
        if (is_round_ && requests_.under_way() == 0) end_round();
    }

  private:
    using ports_by_index = std::map<if_index_t, pm_port_info_t>;

    // The first failure ends the round, as soon as the requests that are under way have ended, too.
    template <typename Value>
    void note(const port_mgr::result<Value> &result) {
        if (!result && failure_.ok()) failure_ = result.why();
    }

    void plan_pages(port_mgr::result<port_mgr::records<pm_port_info_brief_t>> ports) {
        note(ports);
        if (!ports) return;
        std::vector<if_index_t> indexes;
        for (const pm_port_info_brief_t &port : *ports) indexes.push_back(port.if_index);
        pages_ = port_mgr::module_pages(std::move(indexes), paging.ports_of_page);
    }

    void keep(port_mgr::result<port_mgr::records<pm_port_info_t>> ports) {
        if (ports.why().value() == PM_ERR_INVALID_RANGE) return;  // they went meanwhile
        note(ports);
        if (!ports) return;
        for (const pm_port_info_t &port : *ports) found_.insert_or_assign(port.if_index, port);
    }

    void end_round() {
        is_round_ = false;
        announce(failure_.ok() ? "the switch answers" : "no answer: " + failure_.words());
        if (!failure_.ok()) return;
        if (!ports_.empty()) print_changes();
        ports_.swap(found_);
    }

    void announce(const std::string &line) {
        if (line != announced_) std::fprintf(lines_, "%s\n", line.c_str());
        announced_ = line;
    }

    void print_changes() {
        for (const auto &[if_index, port] : ports_)
            if (!found_.contains(if_index)) print_change(if_index, "gone");
        for (const auto &[if_index, port] : found_) {
            const auto before = ports_.find(if_index);
            if (before == ports_.end())
                print_change(if_index, "new");
            else
                print_differences(before->second, port);
        }
    }

    void print_differences(const pm_port_info_t &before, const pm_port_info_t &after) {
        for (const auto &[name, words] : watched) {
            const std::string from = words(before);
            const std::string to = words(after);
            if (from != to) print_change(after.if_index, std::string(name) + " " + from + " -> " + to);
        }
    }

    void print_change(if_index_t if_index, const std::string &what) {
        const unsigned number = ++changes_[if_index];
        std::fprintf(lines_, "%s: %s, change %u\n", port_mgr::interface_name(if_index).c_str(), what.c_str(), number);
    }

    port_mgr::async_requests requests_;
    FILE *lines_;
    bool is_round_ = false;
    std::string announced_;                   // how the switch is
    port_mgr::status failure_;                // of this round
    std::vector<pm_if_index_range_t> pages_;  // of this round
    size_t next_page_ = 0;                    // the first that was not asked for
    ports_by_index found_;                    // in this round
    ports_by_index ports_;                    // in the last round that was answered
    std::map<if_index_t, unsigned> changes_;  // how many each port has had
};

// Returns what a system call returned, and ends the program when it failed.
int check(int result, const char *what) {
    if (result != -1) return result;
    std::fprintf(stderr, "watch_ports: %s: %s\n", what, std::strerror(errno));
    std::exit(1);
}

// The library reports on standard output; that goes to standard error, and our lines to where standard output was.
FILE *take_standard_output() {
    FILE *const lines = fdopen(check(dup(STDOUT_FILENO), "dup"), "w");
    check(lines == nullptr ? -1 : 0, "fdopen");
    check(dup2(STDERR_FILENO, STDOUT_FILENO), "dup2");
    return lines;
}

int open_signals() {
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    sigaddset(&ending, SIGINT);
    check(sigprocmask(SIG_BLOCK, &ending, nullptr), "sigprocmask");
    return check(signalfd(-1, &ending, SFD_CLOEXEC), "signalfd");
}

int open_timer(long milliseconds) {
    const int timer = check(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK), "timerfd_create");
    const timespec interval{milliseconds / 1000, milliseconds % 1000 * 1000000};
    const itimerspec times{interval, {0, 1}};  // the first round at once
    check(timerfd_settime(timer, 0, &times, nullptr), "timerfd_settime");
    return timer;
}

void add(int loop, int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    check(epoll_ctl(loop, EPOLL_CTL_ADD, descriptor, &event), "epoll_ctl");
}

// Returns the descriptor that can be read, or -1 when it is time to look at deadlines.
int wait(int loop, int timeout) {
    epoll_event event{};
    const int count = epoll_wait(loop, &event, 1, timeout);
    if (count == -1 && errno != EINTR) check(count, "epoll_wait");
    return count == 1 ? event.data.fd : -1;
}

// Takes the ticks that have passed. There may be none: the timer can have been set anew.
void take_ticks(int timer) {
    uint64_t ticks = 0;
    if (read(timer, &ticks, sizeof ticks) == -1 && errno != EAGAIN) check(-1, "read");
}

// The loop. Everything that it opens lasts as long as the program.
int watch(mts_handle_t handle, int answers, long milliseconds) {
    FILE *const lines = take_standard_output();
    const int signals = open_signals();
    const int timer = open_timer(milliseconds);
    const int loop = check(epoll_create1(EPOLL_CLOEXEC), "epoll_create1");
    for (const int descriptor : {signals, timer, answers}) add(loop, descriptor);

    port_watch ports(handle, lines);
    for (int ready = -1; ready != signals; ready = wait(loop, ports.poll_timeout())) {
        if (ready == timer) {
            take_ticks(timer);
            ports.begin_round();
        }
        ports.process();
        check(std::fflush(lines), "standard output");
    }
    return 0;
}

// The interval, 0 when it is none.
long interval(int argc, char **argv) {
    if (argc == 1) return 1000;
    const char *const end = argv[1] + std::strlen(argv[1]);
    long milliseconds = 0;
    const auto read = std::from_chars(argv[1], end, milliseconds);
    return argc == 2 && read.ec == std::errc() && read.ptr == end && milliseconds > 0 ? milliseconds : 0;
}

}  // namespace

int main(int argc, char **argv) {
    const long milliseconds = interval(argc, argv);
    if (milliseconds == 0) {
        std::fputs("usage: watch_ports [MILLISECONDS]\n", stderr);
        return 2;
    }
    const platform_dev::mts_handle handle;
    check(handle ? 0 : -1, "mts_dev_open");
    return watch(handle.get(), check(handle.descriptor(), "mts_dev_descriptor"), milliseconds);
}
