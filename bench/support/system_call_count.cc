// SPDX-License-Identifier: Apache-2.0
#include "bench/support/system_call_count.h"

#include <sys/ptrace.h>

#include "bench/support/child_process.h"

namespace bench {

namespace {

constexpr int system_call_stop = SIGTRAP | 0x80;

void go_on(pid_t pid) { require(ptrace(PTRACE_SYSCALL, pid, nullptr, nullptr) == 0, "PTRACE_SYSCALL"); }

class traced_process {
  public:
    explicit traced_process(const std::function<void()> &body) : process_([&] { run_traced(body); }) {
        require(waitpid(pid(), nullptr, 0) == pid(), "waitpid");
        require(ptrace(PTRACE_SETOPTIONS, pid(), nullptr, PTRACE_O_TRACESYSGOOD) == 0, "PTRACE_SETOPTIONS");
        go_on(pid());
    }

    [[nodiscard]] pid_t pid() const { return process_.pid(); }
    [[nodiscard]] uint64_t calls() const { return stops_ / 2; }

    // Takes what waitpid has said. Returns false when the process has ended.
    bool take(int status) {
        if (!WIFSTOPPED(status)) return false;
        if (WSTOPSIG(status) == system_call_stop) ++stops_;
        go_on(pid());
        return true;
    }

  private:
    static void run_traced(const std::function<void()> &body) {
        require(ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0, "PTRACE_TRACEME");
        raise(SIGSTOP);
        body();
    }

    uint64_t stops_ = 0;  // one when a call begins, one when it ends
    child_process process_;
};

}  // namespace

std::vector<uint64_t> count_system_calls(const std::vector<std::function<void()>> &bodies) {
    std::vector<traced_process> processes;
    processes.reserve(bodies.size());
    for (const auto &body : bodies) processes.emplace_back(body);
    for (bool has_ended = false; !has_ended;) {
        int status = 0;
        const pid_t pid = waitpid(-1, &status, 0);
        const auto process = std::ranges::find(processes, pid, &traced_process::pid);
        require(process != processes.end() && (WIFSTOPPED(status) || status == EXIT_SUCCESS), "a counted process");
        has_ended = !process->take(status) && pid == processes.back().pid();
    }
    std::vector<uint64_t> counts;
    for (const traced_process &process : processes) counts.push_back(process.calls());
    return counts;
}

}  // namespace bench
