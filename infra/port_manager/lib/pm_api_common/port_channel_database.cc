// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/port_channel_database.h"

#include <dlfcn.h>

#include <cstdio>

#include "platform/port_channel.h"
#include "port_mgr/service_selection.h"
#include "protocol/byte_order.h"

namespace {

constexpr int32_t failure = -1;

// What makes this process a subscriber of the database, under the name of the command-line shell; the numbers are
// the database's.
struct subscriber_record {
    uint32_t word_0 = 7;
    const char *name = "clish";
    uint32_t word_2 = 262;
    uint32_t words_3_to_6[4] = {};
};

// A library loaded at run time, closed at the end of the scope.
class run_time_library {
  public:
    run_time_library(const char *name, int binding) : handle_(dlopen(name, binding)) {}
    ~run_time_library() {
        if (handle_ != nullptr) dlclose(handle_);
    }
    run_time_library(const run_time_library &) = delete;
    run_time_library &operator=(const run_time_library &) = delete;

    explicit operator bool() const { return handle_ != nullptr; }

    // The function, or null after a line of `complaint` and the loader's error text.
    template <typename Function>
    Function *find(const char *symbol, const char *complaint) const {
        void *const address = dlsym(handle_, symbol);
        const char *const error = dlerror();
        if (error == nullptr && address != nullptr) return reinterpret_cast<Function *>(address);
        std::printf("%s (%s)\n", complaint, error != nullptr ? error : "(null)");
        return nullptr;
    }

    void leave_open() { handle_ = nullptr; }

  private:
    void *handle_;
};

// Subscribes to the port-channel database and calls the function named `symbol` in it through `call`. The libraries
// are loaded for this one call, and closed in the reverse order.
template <typename Function>
int32_t call_database(const char *symbol, auto call) {
    run_time_library subscription("libfsrv_client.so", RTLD_LAZY);
    if (!subscription) {
        std::puts("Unable to open libfsrv_client.so!");
        return failure;
    }
    const auto subscribe = subscription.find<decltype(fsrv_sdb_subscriber_init)>(
        "fsrv_sdb_subscriber_init", "Error loadingfsrv_sdb_subscriber_init");
    subscriber_record subscriber;
    if (subscribe == nullptr || subscribe(&subscriber) != 0) return failure;

    const run_time_library database("libpcm_sdb.so", RTLD_NOW);
    if (!database) {
        std::puts("Unable to open libpcm_sdb.so!");
        // The subscription outlives a database that is not there yet.
        subscription.leave_open();
        return failure;
    }
    const auto function = database.find<Function>(symbol, "Error loading pcm_get_pc_info");
    return function != nullptr && call(function) == 0 ? 0 : failure;
}

}  // namespace

int32_t get_port_channel_members(uint32_t chassis_type, if_index_t channel, void *record) {
    auto *const bytes = static_cast<uint8_t *>(record);
    if (!pm::has_channel_database(chassis_type)) {
        pm::store(bytes + pm::map_record.channel, channel);
        return pcmap_get_port_channel(record) == 0 ? 0 : failure;
    }
    return call_database<decltype(pcm_get_pc_info)>("pcm_get_pc_info", [&](auto *function) {
        pm::store(bytes + pm::database_record.channel, channel);
        return function(record);
    });
}

int32_t get_port_channel_info(uint32_t first, uint32_t second) {
    return call_database<decltype(pcm_get_pc_for_port)>("pcm_get_pc_for_port",
                                                        [&](auto *function) { return function(first, second); });
}
