// SPDX-License-Identifier: Apache-2.0
#include "fake_net_dev.h"

#include <fmt/format.h>

#include <string_view>

#include "call_log.h"
#include "library_code.h"

namespace support {
namespace {

fake_net_dev *active = nullptr;

}  // namespace

fake_net_dev::fake_net_dev() { active = this; }

fake_net_dev::~fake_net_dev() { active = nullptr; }

FILE *fake_net_dev::open(const char *path, const char *mode) {
    call_log::add(fmt::format("fopen({}, {})", path, mode));
    if (!text || std::string_view(path) != "/proc/net/dev") return nullptr;
    ++open_files;
    return fmemopen(text->data(), text->size(), mode);
}

void fake_net_dev::log_read(int size) { call_log::add(fmt::format("fgets({})", size)); }

void fake_net_dev::closed() {
    call_log::add("fclose()");
    --open_files;
}

}  // namespace support

using support::active;
using support::is_library_code;

SUPPORT_INTERPOSER FILE *fopen(const char *path, const char *mode) {
    static FILE *(*real)(const char *, const char *);
    if (active != nullptr && is_library_code(__builtin_return_address(0))) return active->open(path, mode);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("fopen"));
    return real(path, mode);
}

SUPPORT_INTERPOSER char *fgets(char *line, int size, FILE *file) {
    static char *(*real)(char *, int, FILE *);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("fgets"));
    if (active != nullptr && is_library_code(__builtin_return_address(0))) active->log_read(size);
    return real(line, size, file);
}

SUPPORT_INTERPOSER int fclose(FILE *file) {
    static int (*real)(FILE *);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("fclose"));
    if (active != nullptr && is_library_code(__builtin_return_address(0))) active->closed();
    return real(file);
}
