// SPDX-License-Identifier: Apache-2.0
// pmctl shows what a hostile switch answers. The first byte of the input chooses the command, the second one more of
// the way it looks; the rest are the answers, each behind two bytes of its length, and the last again when they ran
// out.
#include <algorithm>
#include <string>

#include "outcome.h"
#include "support/answers.h"
#include "support/pmctl_calls.h"

namespace {

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

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) return 0;
    answer_script script({data + 2, size - 2});
    fuzz::answer_by([&](const fuzz::request &) { return script.next(); }, fuzz::element_tail);
    const std::string &command = fuzz::pmctl_commands()[data[0] % fuzz::pmctl_commands().size()];
    const bool is_json = (data[1] & 1) != 0 && command.starts_with("show") && command != "show running-config";
    pmctl::carry_out(fuzz::pmctl_call(command, is_json),
                     {.colour = (data[1] & 2) != 0, .width = (data[1] & 4) != 0 ? 40u : 0u});
    FUZZ_REQUIRE(fuzz::live_messages() == 0);
    return 0;
}

// A refusal whose status looks like the transport's comes with results that are not pmctl's to free: it cannot tell
// them from those that a failed second exchange left behind. Named by the file, since functions may have no names here.
extern "C" const char *__lsan_default_suppressions() { return "leak:libport_mgr_common.so"; }
extern "C" const char *__lsan_default_options() { return "print_suppressions=0"; }
