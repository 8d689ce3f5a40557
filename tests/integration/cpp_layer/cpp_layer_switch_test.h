// SPDX-License-Identifier: Apache-2.0
// cpp_layer_switch_test.h: a virtual switch, and a handle to ask it with.
#ifndef TESTS_INTEGRATION_CPP_LAYER_CPP_LAYER_SWITCH_TEST_H
#define TESTS_INTEGRATION_CPP_LAYER_CPP_LAYER_SWITCH_TEST_H

#include <optional>
#include <string>
#include <vector>

#include "../virtual_switch/virtual_switch_test.h"
#include "platform_dev/mts_handle.hpp"
#include "port_mgr/port_manager.hpp"

class cpp_layer_switch_test : public runtime_dir_test {
  protected:
    // Ends the switch by a signal and starts it again.
    void restart(int signal) {
        switch_->send(signal);
        switch_->wait();
        switch_.emplace(director);
    }

    [[nodiscard]] mts_handle_t handle() const { return handle_.get(); }

    std::optional<virtual_switch_process> switch_{std::in_place, director};
    platform_dev::mts_handle handle_;
};

template <typename Records>
std::vector<std::string> names_in(Records &&records) {
    std::vector<std::string> names;
    for (const auto &record : records) names.push_back(name_of(record.if_index));
    return names;
}

#endif
