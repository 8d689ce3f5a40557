// SPDX-License-Identifier: Apache-2.0
// text.cc: what the local functions cost that answer without a service: texts, attributes of a configuration,
// interfaces of a range, and the service of an interface.
#include <dlfcn.h>

#include "bench/support/temporary_runtime_dir.h"
#include "bench/text/strings.h"
#include "platform_dev/chassis_db.h"
#include "platform_dev/if_index_dev.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using bench::require;
using bench::touch;

void measure_codes(bench::report &report) {
    bench::contest contest;
    uint32_t status = 0;
    contest.add("pm_map_snmp_error_code", [&status] {
        status = pm_map_snmp_error_code(status + 1);
        touch(&status);
    });
    report.list("codes", "ns", contest.run());
}

struct attribute {
    const char *kind;
    uint8_t type;
    uint8_t length;
};

constexpr attribute attributes[] = {
    {"a byte", 1, 1}, {"a short", 7, 2}, {"a word", 2, 4}, {"a raw pair", 9, 8}, {"a text", 6, 81}};

void measure_attributes(bench::report &report) {
    bench::contest contest;
    for (const attribute &each : attributes) {
        contest.add(std::string("pm_encode_tlv of ") + each.kind, [each] {
            constexpr uint8_t value[PM_CFG_VALUE_SIZE] = {1};
            pm_cfg_tlv_t element;
            require(pm_encode_tlv(&element, each.type, each.length, value) == 0, "pm_encode_tlv");
            touch(&element);
        });
        contest.add(std::string("pm_decode_tlv of ") + each.kind, [each] {
            const pm_cfg_tlv_t element = {each.type, each.length, {1}};
            uint8_t type, length, value[PM_CFG_VALUE_SIZE];
            touch(&element);
            require(pm_decode_tlv(&element, &type, &length, value) == 0, "pm_decode_tlv");
            touch(value);
        });
    }
    report.list("attributes of a configuration", "ns", contest.run());
}

if_index_t if_index_of(const char *name) {
    if_index_t if_index = 0;
    require(if_index_from_name(name, &if_index) == 0, name);
    return if_index;
}

// Every interface from the first to the last, as a caller comes by them.
void add_walk(bench::contest &contest, const std::string &of, const char *first_name, const char *last_name) {
    const if_index_t first = if_index_of(first_name);
    const if_index_t last = if_index_of(last_name);
    uint32_t steps = 0;
    require(pm_get_num_ports_in_if_index_range(first, last, &steps) == 0, "pm_get_num_ports_in_if_index_range");
    const auto walk = [first, last, steps] {
        if_index_t member = 0;
        for (uint32_t i = 0; i < steps; ++i) {
            require(pm_get_if_index_in_range(first, last, &member, i) == 0, "pm_get_if_index_in_range");
            touch(&member);
        }
        require(member == last, "the end of a walk");
    };
    contest.add("pm_get_if_index_in_range over " + of, walk, steps);
}

platform_dev::chassis chassis_of_type(uint32_t type) {
    return {
        .chassis_type = type,
        .slot_count = 10,
        .modules = {},
        .port_channels = {{if_index_of("port-channel12"), {if_index_of("Ethernet2/7"), if_index_of("Ethernet2/8")}}},
        .index_map = {}};
}

void measure_walks(bench::report &report) {
    bench::contest contest;
    add_walk(contest, "48 Fibre Channel ports", "fc1/1", "fc1/48");
    add_walk(contest, "48 Ethernet ports", "Ethernet2/1", "Ethernet2/48");
    add_walk(contest, "256 port channels", "port-channel1", "port-channel256");
    report.list("walks, a step", "ns", contest.run());
}

void add_service_of(bench::contest &contest, const std::string &what, const char *name, uint32_t sap) {
    contest.add("pm_get_mts_sap of " + what,
                [if_index = if_index_of(name), sap] { require(pm_get_mts_sap(if_index) == sap, "pm_get_mts_sap"); });
}

// The libraries that the look-up of a channel's members loads for each call on a chassis with a channel database.
constexpr const char *database_libraries[] = {"libfsrv_client.so", "libpcm_sdb.so"};

void load_and_close() {
    void *loaded[std::size(database_libraries)];
    for (size_t i = 0; i < std::size(loaded); ++i)
        require((loaded[i] = dlopen(database_libraries[i], RTLD_NOW)) != nullptr, database_libraries[i]);
    for (void *library : loaded) dlclose(library);
}

void measure_services(bench::report &report, platform_dev::chassis_publisher &publisher) {
    constexpr uint32_t with_map = 1;
    constexpr uint32_t with_database = 10;
    bench::contest by_map;
    add_service_of(by_map, "a plain port", "fc1/1", PM_SAP_PORT_MANAGER);
    add_service_of(by_map, "a port channel, by the map", "port-channel12", PM_SAP_ETHERNET_CHANNEL);
    require(publisher.publish(chassis_of_type(with_map)), "publish");
    report.list("services, on a chassis with a channel map", "ns", by_map.run());

    bench::contest by_database;
    add_service_of(by_database, "a port channel, by the database", "port-channel12", PM_SAP_ETHERNET_CHANNEL);
    by_database.add("loading and closing the libraries of the database alone", load_and_close);
    require(publisher.publish(chassis_of_type(with_database)), "publish");
    report.table("services, on a chassis with a channel database", "ns", by_database.run());
    for (const char *library : database_libraries) require(dlopen(library, RTLD_NOW) != nullptr, library);
    bench::contest held;
    add_service_of(held, "a port channel, by the database", "port-channel12", PM_SAP_ETHERNET_CHANNEL);
    report.list("the same in a program that holds its libraries", "ns", held.run());
}

}  // namespace

int main(int argc, char **argv) {
    bench::report report(argc, argv, "local functions");
    bench::measure_strings(report);
    measure_codes(report);
    measure_attributes(report);
    const bench::temporary_runtime_dir directory;
    const auto publisher = platform_dev::chassis_publisher::open();
    require(publisher != nullptr && publisher->publish(chassis_of_type(0)), "chassis database");
    measure_walks(report);
    measure_services(report, *publisher);
    report.write();
    return 0;
}
