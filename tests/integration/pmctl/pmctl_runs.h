// SPDX-License-Identifier: Apache-2.0
// pmctl_runs.h: runs of the built client, and what they printed.
#ifndef TESTS_INTEGRATION_PMCTL_PMCTL_RUNS_H
#define TESTS_INTEGRATION_PMCTL_PMCTL_RUNS_H

#include <string>
#include <vector>

struct run_result {
    std::string output;
    std::string messages;
    int status;
};

run_result run_program(const std::vector<std::string> &command);
run_result pmctl(std::vector<std::string> words);
run_result shell(const std::string &script);

// A pipeline for bash. The status is that of its first program.
run_result pipeline(const std::string &programs);

std::vector<std::string> lines_of(const std::string &text);

#endif
