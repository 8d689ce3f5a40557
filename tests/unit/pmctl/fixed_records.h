// SPDX-License-Identifier: Apache-2.0
// Records with a distinct value in every member, so that two swapped ones are seen.
#ifndef TESTS_UNIT_PMCTL_FIXED_RECORDS_H
#define TESTS_UNIT_PMCTL_FIXED_RECORDS_H

#include "port_mgr/port_info_response.h"

// The index of the interface named.
if_index_t index_named(const char *name);

// A port, fc1/4, that has everything.
pm_port_info_t full_port();

// The same with values of which the library knows words.
pm_port_info_t worded_port();

// A port, mgmt0, that has nothing: all zero, the speed unknown.
pm_port_info_t bare_port();

pm_port_info_brief_t full_brief_port();
pm_port_info_brief_t worded_brief_port();
pm_port_info_brief_t bare_brief_port();

#endif
