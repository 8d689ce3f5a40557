// SPDX-License-Identifier: Apache-2.0
// configuration_client.h: a client that changes the configuration of the running daemon.
#ifndef TESTS_INTEGRATION_VIRTUAL_SWITCH_CONFIGURATION_CLIENT_H
#define TESTS_INTEGRATION_VIRTUAL_SWITCH_CONFIGURATION_CLIENT_H

#include <map>

#include "virtual_switch_test.h"

// The value of an attribute, as it lies in memory.
struct attribute_value {
    uint8_t attribute;
    std::vector<uint8_t> bytes;
};

attribute_value byte_value(uint8_t attribute, uint8_t number);
attribute_value short_value(uint8_t attribute, uint16_t number);
attribute_value word_value(uint8_t attribute, uint32_t number);
attribute_value description(const std::string &text);

// What a set came to: its status, and that of each interface by name.
struct set_outcome {
    uint32_t status;
    std::map<std::string, uint32_t> results;
};
bool operator==(const set_outcome &, const set_outcome &);
void PrintTo(const set_outcome &, std::ostream *);

// Waits in seconds for what may not be answered.
inline constexpr uint32_t configuration_wait = 5;

class configuration_client : public client {
  public:
    [[nodiscard]] set_outcome set(const std::vector<pm_if_index_range_t> &ranges, const attribute_value &value) const;
    [[nodiscard]] set_outcome set(const char *name, const attribute_value &value) const;

    [[nodiscard]] answer<pm_port_info_t> configuration(const std::vector<pm_if_index_range_t> &ranges,
                                                       uint32_t kind = PM_CONFIG_GET_FROM_OWNER) const;
    [[nodiscard]] answer<pm_port_info_t> module(uint8_t number, const char *like) const;

    [[nodiscard]] uint32_t config_sub_interfaces(bool create, const std::vector<pm_if_index_range_t> &ranges) const;
    [[nodiscard]] uint32_t config_loopbacks(bool create, const std::vector<pm_if_index_range_t> &ranges) const;

    // The record of one interface; zeroed, with a failure of the test, when it is not there.
    [[nodiscard]] pm_port_info_t record(const char *name) const;
    [[nodiscard]] bool exists(const char *name) const;
};

#endif
