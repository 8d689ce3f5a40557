// SPDX-License-Identifier: Apache-2.0
// dissector_fixture.h: exchanges of clients with the running switch, recorded at both ends and shown by tshark.
#ifndef TESTS_DISSECTOR_DISSECTOR_FIXTURE_H
#define TESTS_DISSECTOR_DISSECTOR_FIXTURE_H

#include <memory>
#include <set>

#include "decoded_capture.h"
#include "unit/platform/runtime_dir_fixture.h"

namespace dissector_test {

// What neither the library nor the switch knows.
inline constexpr uint32_t unknown_opcode = 9999;

// One capture of everything, for all tests.
struct recording {
    recording();

    temporary_runtime_dir directory;
    std::string path = directory.file("all.pcapng");
    json port, tunnel, counters, transceiver, details, resource;
};

class dissector : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        recorded_ = std::make_unique<recording>();
        // With two passes, requests know their answers.
        packets_ = decode(recorded_->path, {"-2"});
    }
    static void TearDownTestSuite() {
        recorded_.reset();
        packets_.clear();
    }

    static const recording &recorded() { return *recorded_; }
    static const std::vector<json> &packets() { return packets_; }

    // The messages of an opcode that clients sent or received.
    static std::vector<json> requests(uint32_t opcode) { return messages(opcode, {"1", "3"}); }
    static std::vector<json> answers(uint32_t opcode) { return messages(opcode, {"2", "4"}); }

    // The first of them with this value of a field.
    static json first_with(const std::vector<json> &from, const std::string &field, const std::string &value) {
        for (const json &packet : from) {
            const auto values = values_of(packet, field);
            if (std::ranges::find(values, value) != values.end()) return packet;
        }
        ADD_FAILURE() << "no packet with " << field << " " << value;
        return {};
    }

  private:
    static std::vector<json> messages(uint32_t opcode, const std::set<std::string> &kinds) {
        std::vector<json> found;
        for (const json &packet : packets_) {
            const bool is_client = value_of(packet, "port_mgr.process_name") != "pm-virtual-switch";
            if (is_client && value_of(packet, "port_mgr.opcode") == std::to_string(opcode) &&
                kinds.contains(value_of(packet, "port_mgr.kind")))
                found.push_back(packet);
        }
        return found;
    }

    static std::unique_ptr<recording> recorded_;
    static std::vector<json> packets_;
};

}  // namespace dissector_test

#endif
