// SPDX-License-Identifier: Apache-2.0
// pmctl_program.h: the built client with and without a switch to ask, and what is in its JSON.
#ifndef TESTS_INTEGRATION_PMCTL_PMCTL_PROGRAM_H
#define TESTS_INTEGRATION_PMCTL_PMCTL_PROGRAM_H

#include <nlohmann/json.hpp>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

// The array of this name in JSON output.
nlohmann::json objects_in(const std::string &json_text, const char *array = "interfaces");

// The names in it.
std::vector<std::string> names_in(const std::string &json_text);

// A run-time directory without a switch.
class pmctl_alone : public runtime_dir_test {};

// One with the director.
class pmctl_program : public pmctl_alone {
  protected:
    virtual_switch_process switch_{director};
};

#endif
