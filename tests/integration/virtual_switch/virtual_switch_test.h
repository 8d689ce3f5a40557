// SPDX-License-Identifier: Apache-2.0
// virtual_switch_test.h: what tests of the running daemon share: the daemon, and a client of it.
#ifndef TESTS_INTEGRATION_VIRTUAL_SWITCH_VIRTUAL_SWITCH_TEST_H
#define TESTS_INTEGRATION_VIRTUAL_SWITCH_VIRTUAL_SWITCH_TEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "port_mgr/port_mgr_common.h"
#include "support/child_process.h"
#include "unit/platform/runtime_dir_fixture.h"

inline const std::string every_kind = SOURCE_FOLDER "/tests/integration/virtual_switch/every_kind.toml";
inline const std::string director = SOURCE_FOLDER "/examples/chassis/director.toml";
inline const std::string fixed_switch = SOURCE_FOLDER "/examples/chassis/fixed.toml";

// A daemon in the run-time directory of the environment, ready to be asked.
class virtual_switch_process : public child_process {
  public:
    explicit virtual_switch_process(const std::string &chassis_file, const std::vector<std::string> &options = {});
    [[nodiscard]] const std::string &ready_line() const { return ready_line_; }

  private:
    std::string ready_line_;
};

template <typename Record>
struct answer {
    uint32_t status = 0;  // of the query, else of the parser
    std::vector<Record> records;
};

// A queue of the test's.
class client {
  public:
    client();
    ~client();
    client(const client &) = delete;
    client &operator=(const client &) = delete;

    [[nodiscard]] mts_handle_t handle() const { return handle_; }

    [[nodiscard]] answer<pm_port_info_t> range(const char *first, const char *last) const;
    [[nodiscard]] answer<pm_port_info_t> ports(uint8_t mode, const std::vector<pm_if_index_range_t> &ranges) const;
    [[nodiscard]] answer<pm_port_info_brief_t> brief(uint8_t mode,
                                                     const std::vector<pm_if_index_range_t> &ranges) const;
    [[nodiscard]] answer<pm_port_info_t> next(if_index_t if_index) const;

    // Sends any request to the supervisor and returns the payload of its answer.
    [[nodiscard]] std::vector<uint8_t> ask(uint32_t sap, uint32_t opcode, const std::vector<uint8_t> &payload) const;

  private:
    mts_handle_t handle_;
};

class virtual_switch_test : public runtime_dir_test {
  protected:
    client client_;
};

if_index_t index_of(const std::string &name);
std::string name_of(if_index_t if_index);
pm_if_index_range_t range_of(const char *first, const char *last);

template <typename Record>
std::vector<std::string> names_of(const std::vector<Record> &records) {
    std::vector<std::string> names;
    for (const Record &record : records) names.push_back(name_of(record.if_index));
    return names;
}

#endif
