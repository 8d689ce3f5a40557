// SPDX-License-Identifier: Apache-2.0
// Says of every interface of the switch which state it is in.
#include <platform/if_index.h>
#include <platform/mts.h>
#include <platform_dev/mts_dev.h>
#include <port_mgr/port_mgr_common.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

namespace {

struct free_block {
    void operator()(void *block) const { std::free(block); }
};

class transport_handle {
  public:
    transport_handle() {
        if (handle_ == 0) throw std::runtime_error("no handle on the transport");
    }
    ~transport_handle() { mts_dev_close(handle_); }
    transport_handle(const transport_handle &) = delete;
    transport_handle &operator=(const transport_handle &) = delete;
    operator mts_handle_t() const { return handle_; }

  private:
    mts_handle_t handle_ = mts_dev_open();
};

void check(uint32_t status) {
    if (status != 0) throw std::runtime_error("status " + std::to_string(status));
}

void print_port_states() {
    const transport_handle handle;
    mts_msg_t answer;
    check(pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, &answer));
    uint32_t count = 0;
    pm_port_info_brief_t *records = nullptr;
    const uint32_t status = pm_parse_get_port_info_brief(&answer, &count, &records);
    const std::unique_ptr<pm_port_info_brief_t[], free_block> ports(records);
    mts_drop(handle, &answer);
    check(status);
    for (const pm_port_info_brief_t &port : std::span(ports.get(), count)) {
        char name[256];
        sprintf_if_index(name, port.if_index);
        std::cout << name << ' ' << port_state_string(port.oper_state) << '\n';
    }
}

}  // namespace

int main() {
    try {
        print_port_states();
        return 0;
    } catch (const std::exception &error) {
        std::cerr << "port_states_in_cpp: " << error.what() << '\n';
        return 1;
    }
}
