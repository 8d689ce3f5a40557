// SPDX-License-Identifier: Apache-2.0
#include "integration/pmctl/pmctl_runs.h"

#include <sstream>

#include "support/child_process.h"

run_result run_program(const std::vector<std::string> &command) {
    child_process program(command);
    run_result result;
    result.output = program.read_rest(child_process::standard_output);
    result.messages = program.read_rest(child_process::standard_error);
    result.status = program.wait();
    return result;
}

run_result pmctl(std::vector<std::string> words) {
    words.insert(words.begin(), PMCTL);
    return run_program(words);
}

run_result shell(const std::string &script) { return run_program({"/bin/sh", "-c", script}); }

run_result pipeline(const std::string &programs) {
    return run_program({"/bin/bash", "-c", programs + "; exit ${PIPESTATUS[0]}"});
}

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}
