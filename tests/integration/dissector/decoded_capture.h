// SPDX-License-Identifier: Apache-2.0
// decoded_capture.h: a capture as tshark shows it with the built dissector.
#ifndef TESTS_DISSECTOR_DECODED_CAPTURE_H
#define TESTS_DISSECTOR_DECODED_CAPTURE_H

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace dissector_test {

// Runs tshark on a capture; fails the test when it fails or when the dissector does.
std::string tshark(const std::string &capture, const std::vector<std::string> &options);

using json = nlohmann::ordered_json;  // fields stay where they were

// The packets of a capture, each what is in its port_mgr layer.
std::vector<json> decode(const std::string &capture, const std::vector<std::string> &options = {});

// The values of a field, wherever it is in a packet, in their order.
std::vector<std::string> values_of(const json &packet, const std::string &field);

// The same of a field that must be there once.
std::string value_of(const json &packet, const std::string &field);

}  // namespace dissector_test

#endif
