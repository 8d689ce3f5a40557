// SPDX-License-Identifier: Apache-2.0
#include "configuration_client.h"

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

template <typename Number>
attribute_value number_value(uint8_t attribute, Number number) {
    attribute_value value{attribute, std::vector<uint8_t>(sizeof number)};
    std::memcpy(value.bytes.data(), &number, sizeof number);
    return value;
}

answer<pm_port_info_t> owned(uint32_t status, uint32_t count, pm_port_info_t *records) {
    answer<pm_port_info_t> taken{status, {}};
    if (status == 0 && records != nullptr) taken.records.assign(records, records + count);
    std::free(records);
    return taken;
}

struct free_block {
    void operator()(void *block) const { std::free(block); }
};

// As a command line hands them over.
std::unique_ptr<pm_if_range_list_t, free_block> range_list(const std::vector<pm_if_index_range_t> &ranges) {
    void *const block = std::calloc(1, sizeof(pm_if_range_list_t) + ranges.size() * sizeof ranges[0]);
    std::unique_ptr<pm_if_range_list_t, free_block> list(static_cast<pm_if_range_list_t *>(block));
    list->count = static_cast<uint32_t>(ranges.size());
    std::memcpy(list->ranges, ranges.data(), ranges.size() * sizeof ranges[0]);
    return list;
}

}  // namespace

attribute_value byte_value(uint8_t attribute, uint8_t number) { return number_value(attribute, number); }
attribute_value short_value(uint8_t attribute, uint16_t number) { return number_value(attribute, number); }
attribute_value word_value(uint8_t attribute, uint32_t number) { return number_value(attribute, number); }

attribute_value description(const std::string &text) {
    attribute_value value{PM_ATTR_DESCRIPTION, std::vector<uint8_t>(PM_CFG_VALUE_SIZE)};
    std::memcpy(value.bytes.data(), text.data(), std::min(text.size(), value.bytes.size()));
    return value;
}

bool operator==(const set_outcome &a, const set_outcome &b) { return a.status == b.status && a.results == b.results; }

void PrintTo(const set_outcome &outcome, std::ostream *to) {
    *to << "status 0x" << std::hex << outcome.status;
    for (const auto &[name, status] : outcome.results) *to << ", " << name << " 0x" << status;
    *to << std::dec;
}

set_outcome configuration_client::set(const std::vector<pm_if_index_range_t> &ranges,
                                      const attribute_value &value) const {
    uint32_t count = 0;
    pm_set_port_result_t *entries = nullptr;
    set_outcome outcome{};
    outcome.status = pm_cmi_set_port_config(
        handle(), "tester", "virtual switch test", static_cast<uint32_t>(ranges.size()), ranges.data(), value.attribute,
        static_cast<uint8_t>(value.bytes.size()), value.bytes.data(), &count, &entries, configuration_wait);
    for (uint32_t i = 0; i < count; ++i) {
        outcome.results[name_of(entries[i].if_index)] = __builtin_bswap32(entries[i].status);
    }
    std::free(entries);
    return outcome;
}

set_outcome configuration_client::set(const char *name, const attribute_value &value) const {
    return set({range_of(name, name)}, value);
}

answer<pm_port_info_t> configuration_client::configuration(const std::vector<pm_if_index_range_t> &ranges,
                                                           uint32_t kind) const {
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    const uint32_t status = pm_cmi_get_port_config(handle(), kind, static_cast<uint32_t>(ranges.size()), ranges.data(),
                                                   &count, &records, configuration_wait);
    return owned(status, count, records);
}

answer<pm_port_info_t> configuration_client::module(uint8_t number, const char *like) const {
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    const uint32_t status =
        pm_cmi_get_module_interface_listing(handle(), number, index_of(like), configuration_wait, &count, &records);
    return owned(status, count, records);
}

uint32_t configuration_client::config_sub_interfaces(bool create,
                                                     const std::vector<pm_if_index_range_t> &ranges) const {
    return pm_cli_config_sub_interface(handle(), create ? 1 : 0, PM_IF_KINDS_WITH_SUB_INTF, 0, range_list(ranges).get(),
                                       configuration_wait);
}

uint32_t configuration_client::config_loopbacks(bool create, const std::vector<pm_if_index_range_t> &ranges) const {
    return pm_cli_config_loopback_interface(handle(), create ? 1 : 0, PM_IF_KIND_LOOPBACK, 0, range_list(ranges).get(),
                                            configuration_wait);
}

pm_port_info_t configuration_client::record(const char *name) const {
    const answer<pm_port_info_t> found = range(name, name);
    EXPECT_EQ(found.status, 0u) << name;
    return found.records.size() == 1 ? found.records.front() : pm_port_info_t{};
}

bool configuration_client::exists(const char *name) const { return range(name, name).status == 0; }
