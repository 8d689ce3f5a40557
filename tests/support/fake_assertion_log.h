// SPDX-License-Identifier: Apache-2.0
// fake_assertion_log.h: the assertion log, moved to a temporary folder, and the system log. While the object lives,
// what the library does with them is logged here, apart from its other calls.
#ifndef SUPPORT_FAKE_ASSERTION_LOG_H
#define SUPPORT_FAKE_ASSERTION_LOG_H

#include <cstddef>
#include <string>
#include <vector>

namespace support {

class fake_assertion_log {
  public:
    enum class scenario { normal, missing_folder, descriptor_0, no_status };

    fake_assertion_log();
    ~fake_assertion_log();
    fake_assertion_log(const fake_assertion_log &) = delete;
    fake_assertion_log &operator=(const fake_assertion_log &) = delete;

    void set(scenario what) { scenario_ = what; }

    // Makes the log hold this many zero bytes.
    void resize(size_t size);

    // The bytes of the log, from an offset on.
    [[nodiscard]] std::string text(size_t from = 0) const;

    // The checks that failed since the last call, as "<source file>: <function>". The system log must tell the same,
    // and each line that a report names must hold a check.
    std::vector<std::string> take();

    // The calls, a line each, and the lines of the system log, since the last call of these functions.
    std::vector<std::string> take_calls();
    std::vector<std::string> take_system_log();

    // Permissions that the log was created with.
    [[nodiscard]] unsigned permissions() const;

    // What the functions that stand in for the C library's ask and tell.
    int open_log(int flags, unsigned mode);
    void add_call(const char *call);
    void add_call(const char *function, size_t size);
    void add_system_log(int priority, const char *format);
    [[nodiscard]] bool is_log(int file) const { return log_ > 0 && file == log_; }
    [[nodiscard]] bool has_status() const { return scenario_ != scenario::no_status; }
    void closed() { log_ = -1; }

  private:
    std::string folder_;
    std::string path_;
    scenario scenario_ = scenario::normal;
    int log_ = -1;
    size_t taken_ = 0;
    std::vector<std::string> calls_;
    std::vector<std::string> system_log_;
};

}  // namespace support

#endif
