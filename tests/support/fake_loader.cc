// SPDX-License-Identifier: Apache-2.0
#include "fake_loader.h"

#include <dlfcn.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "call_log.h"
#include "library_code.h"
#include "platform/port_channel.h"

namespace support {
namespace {

fake_loader *active = nullptr;
const char *pending_error = nullptr;

// The handles of the libraries are the addresses of their names here.
constexpr std::array<const char *, 2> library_names{"libfsrv_client.so", "libpcm_sdb.so"};

const void *handle_of(std::string_view file) {
    const auto *const name = std::ranges::find(library_names, file);
    return name != library_names.end() ? name : nullptr;
}

const char *name_of(const void *handle) {
    for (const char *const &name : library_names) {
        if (handle == &name) return name;
    }
    return nullptr;
}

std::string binding_text(int mode) {
    if (mode == RTLD_LAZY) return "RTLD_LAZY";
    if (mode == RTLD_NOW) return "RTLD_NOW";
    return fmt::format("{:#x}", mode);
}

void *open_library(const char *file, int mode, const void *handle) {
    call_log::add(fmt::format("dlopen({}, {})", file, binding_text(mode)));
    if (active->missing_libraries.contains(file)) {
        pending_error = "no such library";
        return nullptr;
    }
    pending_error = nullptr;
    active->open_libraries.emplace_back(file);
    return const_cast<void *>(handle);
}

void close_library(const char *file) {
    call_log::add(fmt::format("dlclose({})", file));
    const auto open = std::ranges::find(active->open_libraries, file);
    if (open == active->open_libraries.end()) {
        ADD_FAILURE() << file << " is closed more often than it was opened";
        return;
    }
    active->open_libraries.erase(open);
}

int32_t subscribe(void *subscriber) {
    struct {
        uint32_t word_0;
        const char *name;
        uint32_t word_2;
        uint32_t words_3_to_6[4];
    } record;
    std::memcpy(&record, subscriber, sizeof record);
    call_log::add(fmt::format("fsrv_sdb_subscriber_init({}, {}, {}, {})", record.word_0, record.name, record.word_2,
                              fmt::join(record.words_3_to_6, " ")));
    return active->subscribe_result;
}

int32_t get_info(void *record) {
    auto *const bytes = static_cast<uint8_t *>(record);
    if_index_t channel;
    std::memcpy(&channel, bytes + 6, sizeof channel);
    call_log::add(fmt::format("pcm_get_pc_info({:#010x})", channel));
    // Rubbish around the two members, so that a look at another place is seen.
    std::memset(bytes + 10, 0xee, 144 - 10);
    std::memcpy(bytes + active->count_offset, &active->member_count, sizeof active->member_count);
    std::memcpy(bytes + active->member_offset, &active->member, sizeof active->member);
    return active->info_result;
}

int32_t get_for_port(uint32_t first, uint32_t second) {
    call_log::add(fmt::format("pcm_get_pc_for_port({:#x}, {:#x})", first, second));
    return active->port_result;
}

char *take_error() {
    call_log::add("dlerror()");
    return const_cast<char *>(std::exchange(pending_error, nullptr));
}

// Where a symbol really is.
void *address_of(std::string_view library, std::string_view symbol) {
    if (library == library_names[0] && symbol == "fsrv_sdb_subscriber_init") return reinterpret_cast<void *>(subscribe);
    if (library == library_names[1] && symbol == "pcm_get_pc_info") return reinterpret_cast<void *>(get_info);
    if (library == library_names[1] && symbol == "pcm_get_pc_for_port") return reinterpret_cast<void *>(get_for_port);
    return nullptr;
}

void *find_symbol(const char *library, const char *symbol) {
    call_log::add(fmt::format("dlsym({}, {})", library, symbol));
    const auto special = active->look_ups.find(symbol);
    const bool found = special == active->look_ups.end();
    pending_error = found ? nullptr : special->second.error;
    return !found && special->second.is_null ? nullptr : address_of(library, symbol);
}

}  // namespace

fake_loader::fake_loader() { active = this; }

fake_loader::~fake_loader() { active = nullptr; }

}  // namespace support

SUPPORT_INTERPOSER void *dlopen(const char *file, int mode) {
    static void *(*real)(const char *, int);
    const void *const handle = support::active != nullptr && file != nullptr ? support::handle_of(file) : nullptr;
    if (handle != nullptr) return support::open_library(file, mode, handle);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("dlopen"));
    return real(file, mode);
}

SUPPORT_INTERPOSER void *dlsym(void *handle, const char *symbol) {
    static void *(*real)(void *, const char *);
    const char *const library = support::active != nullptr ? support::name_of(handle) : nullptr;
    if (library != nullptr) return support::find_symbol(library, symbol);
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(dlvsym(RTLD_NEXT, "dlsym", "GLIBC_2.34"));
    // A tail call: RTLD_NEXT starts behind the object that it returns to, which stays the caller's.
    return real(handle, symbol);
}

SUPPORT_INTERPOSER char *dlerror() {
    static char *(*real)();
    if (support::active != nullptr && support::is_library_code(__builtin_return_address(0))) {
        return support::take_error();
    }
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("dlerror"));
    return real();
}

SUPPORT_INTERPOSER int dlclose(void *handle) {
    static int (*real)(void *);
    const char *const library = support::active != nullptr ? support::name_of(handle) : nullptr;
    if (library != nullptr) {
        support::close_library(library);
        return 0;
    }
    if (real == nullptr) real = reinterpret_cast<decltype(real)>(support::next_symbol("dlclose"));
    return real(handle);
}
