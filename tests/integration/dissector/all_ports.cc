// SPDX-License-Identifier: Apache-2.0
// Asks for all ports in one message.
#include "platform_dev/mts_dev.h"
#include "port_mgr/port_mgr_common.h"

int main() {
    const mts_handle_t handle = mts_dev_open();
    mts_msg_t answer{};
    if (pm_get_port_info(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, &answer) != 0) return 1;
    return mts_drop(handle, &answer);
}
