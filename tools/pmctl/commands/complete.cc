// SPDX-License-Identifier: Apache-2.0
#include "commands/complete.h"

#include <sys/time.h>

#include <csignal>

#include "command_line/completion.h"
#include "failure.h"
#include "switch/interface_names.h"
#include "switch/switch_client.h"

namespace pmctl {
namespace {

// Interrupts what blocks after a second, and again if something else blocks then: who types does not wait long.
class short_patience {
  public:
    short_patience() {
        struct sigaction interrupt {};
        interrupt.sa_handler = [](int) {};
        sigaction(SIGALRM, &interrupt, nullptr);
        constexpr itimerval soon{{0, 100'000}, {1, 0}};
        setitimer(ITIMER_REAL, &soon, nullptr);
    }
    ~short_patience() {
        constexpr itimerval never{};
        setitimer(ITIMER_REAL, &never, nullptr);
    }
    short_patience(const short_patience &) = delete;
    short_patience &operator=(const short_patience &) = delete;
};

// None when the switch does not say.
std::vector<std::string> live_interface_names() try {
    const short_patience limit;
    std::vector<std::string> names;
    for (const if_index_t index : switch_client().interfaces()) names.push_back(interface_name(index));
    return names;
} catch (const switch_unavailable &) {
    return {};
} catch (const query_refused &) {
    return {};
}

}  // namespace

command_result run_complete(const arguments &given) {
    command_result result;
    for (const std::string &candidate : completions(given.words("WORD"), live_interface_names))
        result.output.text += candidate + "\n";
    return result;
}

}  // namespace pmctl
