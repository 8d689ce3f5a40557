// SPDX-License-Identifier: Apache-2.0
// A switch for tests: the functions of the library and of the transport that pmctl calls, answering from a script. It
// keeps count of what must be released.
#ifndef TESTS_UNIT_PMCTL_SCRIPTED_SWITCH_H
#define TESTS_UNIT_PMCTL_SCRIPTED_SWITCH_H

#include <map>
#include <string>
#include <vector>

#include "port_mgr/port_info_response.h"

struct scripted_switch {
    int open_error = 0;             // why no handle can be opened
    bool port_manager_runs = true;  // what a get-next finds
    uint32_t request_status = 0;    // of queries for all ports
    uint32_t answer_status = 0;     // the same
    std::vector<pm_port_info_t> ports;
    std::vector<pm_port_info_brief_t> brief_ports;

    struct range_answer {
        uint32_t request_status = 0;
        uint32_t answer_status = 0;
        std::vector<pm_port_info_t> ports;
    };
    std::map<std::string, range_answer> ranges;  // by "first last"

    std::vector<std::string> asked;  // every query: "all", "brief", "next", "first last"
    int open_handles = 0;
    int undropped_messages = 0;
};

// The switch that the functions below answer for; a test replaces it.
extern scripted_switch the_switch;

#endif
