// SPDX-License-Identifier: Apache-2.0
#include "fake_assertion_log.h"

#include <execinfo.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

#include "library_code.h"

namespace support {
namespace {

fake_assertion_log *active = nullptr;
constexpr std::string_view log_path = "/log/assert-backtrace";

bool is_log_path(const char *path) { return path == log_path; }

// The text of a line of a file of the source tree.
std::string source_line(const std::string &file, int number) {
    std::ifstream source(std::filesystem::path(SUPPORT_SOURCE_FOLDER) / file);
    std::string line;
    for (int i = 0; i < number; ++i) std::getline(source, line);
    return source ? line : "no such line";
}

struct report {
    char file[256] = "";
    char function[256] = "";
    int line = 0;
};

report read_report(const char *text) {
    report found;
    std::sscanf(text, "ASSERT: %*s %*s file %255[^,], function %255[^,], line %d", found.file, found.function,
                &found.line);
    return found;
}

}  // namespace

fake_assertion_log::fake_assertion_log() {
    char pattern[] = "/tmp/port_mgr_test.XXXXXX";
    folder_ = mkdtemp(pattern);
    path_ = folder_ + "/assert-backtrace";
    active = this;
}

fake_assertion_log::~fake_assertion_log() {
    active = nullptr;
    std::filesystem::remove_all(folder_);
}

void fake_assertion_log::resize(size_t size) {
    std::ofstream(path_, std::ios::app).close();
    std::filesystem::resize_file(path_, size);
    taken_ = size;
}

std::string fake_assertion_log::text(size_t from) const {
    std::ifstream file(path_, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(from));
    std::ostringstream rest;
    rest << file.rdbuf();
    return rest.str();
}

std::vector<std::string> fake_assertion_log::take() {
    const std::string added = text(taken_);
    taken_ += added.size();
    std::vector<std::string> checks;
    std::vector<std::string> expected_system_log;
    for (size_t at = 0; (at = added.find("ASSERT: ", at)) != std::string::npos; ++at) {
        const report found = read_report(&added[at]);
        EXPECT_THAT(source_line(found.file, found.line), testing::HasSubstr("PM_ASSERT("));
        checks.push_back(std::filesystem::path(found.file).filename().string() + ": " + found.function);
        expected_system_log.push_back(fmt::format("7 Exception at: {}/{}", found.function, found.line));
    }
    EXPECT_EQ(take_system_log(), expected_system_log);
    return checks;
}

std::vector<std::string> fake_assertion_log::take_calls() { return std::exchange(calls_, {}); }

std::vector<std::string> fake_assertion_log::take_system_log() { return std::exchange(system_log_, {}); }

unsigned fake_assertion_log::permissions() const {
    struct stat status {};
    return stat(path_.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

int fake_assertion_log::open_log(int flags, unsigned mode) {
    // A descriptor that programs started later do not inherit is the same log.
    calls_.push_back(fmt::format("open({:#o}, {:#o})", flags & ~O_CLOEXEC, mode));
    if (scenario_ == scenario::missing_folder) {
        errno = ENOENT;
        return -1;
    }
    if (scenario_ == scenario::descriptor_0) return 0;
    log_ = openat(AT_FDCWD, path_.c_str(), flags, mode);
    return log_;
}

void fake_assertion_log::add_call(const char *call) { calls_.emplace_back(call); }

void fake_assertion_log::add_call(const char *function, size_t size) {
    calls_.push_back(fmt::format("{}({})", function, size));
}

void fake_assertion_log::add_system_log(int priority, const char *format) {
    system_log_.push_back(fmt::format("{} {}", priority, format));
    add_call("syslog");
}

}  // namespace support

using support::active;

SUPPORT_INTERPOSER int open(const char *path, int flags, ...) {
    unsigned mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, unsigned);
        va_end(rest);
    }
    if (active != nullptr && support::is_log_path(path)) return active->open_log(flags, mode);
    return openat(AT_FDCWD, path, flags, mode);
}

SUPPORT_INTERPOSER int fstat(int file, struct stat *status) noexcept {
    if (active != nullptr && active->is_log(file)) {
        active->add_call("fstat");
        if (!active->has_status()) {
            errno = EIO;
            return -1;
        }
    }
    return fstatat(file, "", status, AT_EMPTY_PATH);
}

SUPPORT_INTERPOSER ssize_t write(int file, const void *text, size_t size) {
    if (active != nullptr && active->is_log(file)) active->add_call("write", size);
    return syscall(SYS_write, file, text, size);
}

SUPPORT_INTERPOSER int close(int file) {
    if (active != nullptr && active->is_log(file)) {
        active->add_call("close");
        active->closed();
    }
    return static_cast<int>(syscall(SYS_close, file));
}

SUPPORT_INTERPOSER int backtrace(void **addresses, int size) {
    static int (*real)(void **, int);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("backtrace"));
    if (active != nullptr) active->add_call("backtrace", static_cast<size_t>(size));
    return real(addresses, size);
}

SUPPORT_INTERPOSER void backtrace_symbols_fd(void *const *addresses, int count, int file) noexcept {
    static void (*real)(void *const *, int, int);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("backtrace_symbols_fd"));
    if (active != nullptr) active->add_call("backtrace_symbols_fd");
    real(addresses, count, file);
}

SUPPORT_INTERPOSER void syslog(int priority, const char *format, ...) {
    if (active != nullptr) active->add_system_log(priority, format);
}
