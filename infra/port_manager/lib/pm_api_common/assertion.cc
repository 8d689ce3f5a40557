// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/assertion.h"

#include <execinfo.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace pm {
namespace {

constexpr const char *log_path = "/log/assert-backtrace";
constexpr mode_t log_mode = 0600;
constexpr off_t log_size_limit = 0x100000;
constexpr int priority_debug = 7;

using text_buffer = std::array<char, 500>;

// The terminating NUL is part of every piece: readers of the log split it there.
void write_piece(int log, const text_buffer &text) {
    [[maybe_unused]] const ssize_t written = write(log, text.data(), std::strlen(text.data()) + 1);
}

void format_local_time(std::array<char, 100> &text) {
    const time_t now = time(nullptr);
    struct tm local {};
    localtime_r(&now, &local);
    strftime(text.data(), text.size(), "%F %T", &local);
}

bool has_room(int log) {
    struct stat status {};
    return fstat(log, &status) == 0 && status.st_size <= log_size_limit;
}

// A function's name holds no conversion, so the text can be the format.
void log_text(const text_buffer &text) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
    syslog(priority_debug, text.data());
#pragma GCC diagnostic pop
}

}  // namespace

void report_assertion(const char *file, const char *function, int line) {
    std::array<void *, 50> addresses;
    const int depth = backtrace(addresses.data(), addresses.size());

    const int log = open(log_path, O_WRONLY | O_CREAT | O_APPEND, log_mode);
    if (log <= 0) return;
    if (!has_room(log)) {
        close(log);
        return;
    }

    std::array<char, 100> timestamp;
    format_local_time(timestamp);
    text_buffer text;
    std::snprintf(text.data(), text.size(), "%s",
                  "\n\n---------------------------------------------------------------\n");
    write_piece(log, text);
    std::snprintf(text.data(), text.size(), "ASSERT: %s: file %s, function %s, line %d, pid: %d \n", timestamp.data(),
                  file, function, line, static_cast<int>(getpid()));
    write_piece(log, text);
    std::snprintf(text.data(), text.size(), "%s", "\nBacktrace:\n");
    write_piece(log, text);
    backtrace_symbols_fd(addresses.data(), depth, log);
    close(log);

    std::snprintf(text.data(), text.size(), "Exception at: %s/%d", function, line);
    log_text(text);
}

}  // namespace pm
