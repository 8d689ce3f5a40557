// SPDX-License-Identifier: Apache-2.0
#include "chassis_db/chassis_reader.h"
#include "platform/port_channel.h"

namespace {

constexpr uint32_t subscriber_form = 7;

// The head of the record that fsrv_sdb_subscriber_init takes.
struct subscriber {
    uint32_t form;
    const char *name;
};

}  // namespace

int32_t fsrv_sdb_subscriber_init(void *record) {
    const auto *wanted = static_cast<const subscriber *>(record);
    const bool valid = wanted->form == subscriber_form && wanted->name != nullptr;
    return valid && platform_dev::find_chassis() ? 0 : -1;
}
