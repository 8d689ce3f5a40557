// SPDX-License-Identifier: Apache-2.0
// A switch for tests: the functions of the library and of the transport that pmctl calls, answering from a script. It
// keeps count of what must be released.
#ifndef TESTS_UNIT_PMCTL_SCRIPTED_SWITCH_H
#define TESTS_UNIT_PMCTL_SCRIPTED_SWITCH_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "port_mgr/ethernet_stats.h"
#include "port_mgr/net_dev_stats.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/sfp_diagnostics.h"
#include "port_mgr/transceiver_info.h"

// A change that the switch was asked for.
struct asked_change {
    std::string interfaces;  // "fc1/1 fc1/2"; of sub-interfaces and loopbacks "create fc1/1 fc1/2"
    uint8_t attribute = 0;
    std::vector<uint8_t> value;

    bool operator==(const asked_change &) const = default;
};

struct scripted_switch {
    int open_error = 0;             // why no handle can be opened
    bool port_manager_runs = true;  // what a get-next finds
    uint32_t request_status = 0;    // of queries for all ports in brief
    uint32_t answer_status = 0;     // the same
    std::vector<pm_port_info_brief_t> brief_ports;

    struct range_answer {
        uint32_t request_status = 0;
        uint32_t answer_status = 0;
        std::vector<pm_port_info_t> ports;
        uint32_t receive_error = 0;  // why no answer comes
    };
    std::map<std::string, range_answer> ranges;  // by "first last"

    std::map<std::string, range_answer> configured;  // by the interfaces asked about, "first last" each
    std::map<uint8_t, range_answer> modules;         // by the type of interface, as the status and its ports
    std::map<std::string, uint32_t> services;        // that own interfaces, by the name; else 43
    std::map<std::string, uint32_t> set_statuses;    // of what an interface is set to, by its name; else 0
    std::map<std::string, uint32_t> set_failures;    // the status of a request without results, by its first interface
    std::vector<std::string> silent;                 // interfaces that no service says anything about
    uint32_t creation_status = 0;

    // By the name of the interface; one that is not here is in no answer.
    std::map<std::string, pm_fcot_info_t> transceivers;
    std::map<std::string, uint32_t> transceiver_statuses;  // of a request, by its first interface; else 0
    bool transceivers_are_lost = false;                    // as when memory runs out for them

    struct line_card_readings {
        uint32_t status = 0;
        pm_sfp_diag_info_t info{};
        std::optional<pm_sfp_diag_extra_t> extra;
    };
    std::map<std::string, line_card_readings> readings;  // by the name; else the line card is not there

    struct counter_answer {
        int32_t status = 0;
        uint32_t error = 0;  // the transport's
        pm_eth_stats_t stats{};
    };
    std::map<std::string, counter_answer> counters;  // by the name; else the line card is not there

    struct payload_answer {
        uint32_t request_status = 0;
        std::vector<uint8_t> payload;
    };
    std::map<uint8_t, payload_answer> listings;    // by the type of interfaces
    std::map<uint16_t, payload_answer> resources;  // by the module

    std::map<std::string, pm_net_dev_stats_t> host_interfaces;  // of this machine

    std::vector<asked_change> changes;
    std::vector<std::string> asked_by;  // the two texts of each set

    std::vector<std::string>
        asked;                  // every query: "brief", "next", "first last", "module 3 type 1", "read Ethernet4/1"
    size_t queue_room = 1000;   // how many requests for ranges can be under way; one more is not sent
    size_t most_under_way = 0;  // how many there were
    int open_handles = 0;
    int undropped_messages = 0;
    uint32_t last_error = 0;  // the transport's, of the handle opened last
};

// The switch that the functions below answer for; a test replaces it.
extern scripted_switch the_switch;

#endif
