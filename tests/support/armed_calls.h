// SPDX-License-Identifier: Apache-2.0
// armed_calls.h: which calls of the C library are the turn of a fault: those that shared objects make, counted while a
// test has them armed, on its own thread.
#ifndef SUPPORT_ARMED_CALLS_H
#define SUPPORT_ARMED_CALLS_H

#include <climits>

// The linker names where the program itself lies.
extern "C" const char __executable_start;
extern "C" const char etext;

// Functions that run before sanitizers are set up.
#define SUPPORT_UNSANITIZED __attribute__((no_sanitize("address", "undefined", "thread")))

namespace support {

// The calls from `first` to `last`, counted from 1.
struct call_range {
    int first = INT_MAX;
    int last = INT_MAX;

    static call_range only(int call) { return {call, call}; }
    static call_range from(int call) { return {call, INT_MAX}; }
};

class armed_calls {
  public:
    explicit armed_calls(call_range turns) : turns_(turns) {}

    // Counts a call. Returns how many have failed with it, or 0 when it is not its turn.
    SUPPORT_UNSANITIZED int count() {
        ++made_;
        if (made_ < turns_.first || made_ > turns_.last) return 0;
        return ++failed_;
    }
    [[nodiscard]] int made() const { return made_; }
    [[nodiscard]] int failed() const { return failed_; }

  private:
    call_range turns_;
    int made_ = 0;
    int failed_ = 0;
};

// Whether the program itself made the call, not one of its shared objects.
SUPPORT_UNSANITIZED inline bool is_own_code(const void *return_address) {
    return return_address >= &__executable_start && return_address < &etext;
}

}  // namespace support

#endif
