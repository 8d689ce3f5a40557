// SPDX-License-Identifier: Apache-2.0
// pmctl shows what a hostile switch answers. The first byte of the input chooses the command, the second one more of
// the way it looks; the rest are the answers, each behind two bytes of its length, and the last again when they ran
// out.
#include <algorithm>
#include <string>
#include <vector>

#include "outcome.h"
#include "settings/line_words.h"
#include "support/answers.h"

namespace {

const std::vector<std::string> commands{
    "show interface",
    "show interface brief",
    "show interface fc1/1",
    "show interface transceiver",
    "show interface transceiver details fc1/1",
    "show interface capabilities",
    "show interface counters",
    "show interface index",
    "show running-config",
    "show module 1 interfaces",
    "show module resources",
    "config interface fc1/1 shutdown",
    "config subinterface create Ethernet2/1.5",
    "config loopback delete loopback2",
    "clear counters Ethernet2/1",
};

class answer_script {
  public:
    explicit answer_script(fuzz::bytes input) : rest_(input) {}

    fuzz::bytes next() {
        if (rest_.size() < 2) return last_;
        const size_t length = std::min<size_t>(rest_[0] * 256u + rest_[1], rest_.size() - 2);
        last_ = rest_.subspan(2, length);
        rest_ = rest_.subspan(2 + length);
        return fuzz::takes_long(last_, 189) ? fuzz::bytes{} : last_;
    }

  private:
    fuzz::bytes rest_;
    fuzz::bytes last_;
};

pmctl::invocation parse(const std::string &command, bool is_json) {
    std::vector<std::string> words = pmctl::line_words("pmctl " + command + (is_json ? " --json" : ""));
    std::vector<const char *> argv;
    for (const std::string &word : words) argv.push_back(word.c_str());
    return pmctl::parse_command_line(static_cast<int>(argv.size()), argv.data());
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) return 0;
    answer_script script({data + 2, size - 2});
    fuzz::answer_by([&](const fuzz::request &) { return script.next(); }, fuzz::element_tail);
    const std::string &command = commands[data[0] % commands.size()];
    const bool is_json = (data[1] & 1) != 0 && command.starts_with("show") && command != "show running-config";
    const pmctl::invocation call = parse(command, is_json);
    pmctl::carry_out(call, {.colour = (data[1] & 2) != 0, .width = (data[1] & 4) != 0 ? 40u : 0u});
    FUZZ_REQUIRE(fuzz::live_messages() == 0);
    return 0;
}
