// SPDX-License-Identifier: Apache-2.0
#include "misdeed.h"

#include <set>

using transport_test::all_seals;
using transport_test::bytes_of;
using transport_test::hostile_frames;
using transport_test::raw_socket;

namespace faults {
namespace {

constexpr uint32_t connection_in_token = 1u << 24;
constexpr uint32_t largest_payload = 16 * 1024 * 1024;
constexpr uint32_t largest_in_packet = 200'000;

void send_in_memory_file(const raw_socket &client, const answer_frame &frame) {
    const int file = memfd_create("answer", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    EXPECT_EQ(write(file, frame.payload.data(), frame.payload.size()), static_cast<ssize_t>(frame.payload.size()));
    EXPECT_EQ(ftruncate(file, frame.header.payload_size), 0);
    EXPECT_EQ(fcntl(file, F_ADD_SEALS, all_seals), 0);
    transport_test::send_in_memory_file(client, frame.header, file);
    close(file);
}

afterwards send_changed(const raw_socket &client, answer_frame frame, auto change) {
    change(frame);
    frame.header.payload_size = static_cast<uint32_t>(frame.payload.size());
    send(client, frame);
    return afterwards::goes_on;
}

afterwards twice(const raw_socket &client, const answer_frame &good, uint32_t) {
    send(client, good);
    send(client, good);
    return afterwards::goes_on;
}

afterwards in_a_memory_file(const raw_socket &client, const answer_frame &good, uint32_t) {
    send_in_memory_file(client, good);
    return afterwards::goes_on;
}

afterwards with_another_opcode(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { ++frame.header.opcode; });
}

afterwards with_another_message_id(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { frame.header.message_id ^= 0xffff; });
}

afterwards and_closes(const raw_socket &client, const answer_frame &good, uint32_t) {
    send(client, good);
    return afterwards::closes;
}

afterwards late(const raw_socket &, const answer_frame &, uint32_t) { return afterwards::answers_late; }

afterwards never(const raw_socket &, const answer_frame &, uint32_t) { return afterwards::goes_on; }

afterwards to_the_request_before(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { --frame.header.token; });
}

afterwards to_no_request(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { ++frame.header.token; });
}

afterwards to_a_request_of_no_connection(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { frame.header.token += 100 * connection_in_token; });
}

// Message for CMI, and back.
afterwards of_the_other_kind(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { frame.header.kind ^= 2 ^ 4; });
}

afterwards closes_instead(const raw_socket &, const answer_frame &, uint32_t) { return afterwards::closes; }

afterwards closes_in_the_middle(const raw_socket &client, const answer_frame &good, uint32_t) {
    const std::string whole = bytes_of(good.header, good.payload.substr(0, 4));
    client.send(whole.substr(0, whole.size() / 2));
    return afterwards::closes;
}

afterwards hostile(const raw_socket &client, const answer_frame &good, uint32_t number) {
    transport_test::send_hostile(client, hostile_frames[number], good.header);
    return afterwards::goes_on;
}

afterwards cut(const raw_socket &client, const answer_frame &good, uint32_t number) {
    return send_changed(client, good, [&](answer_frame &frame) { frame.payload.resize(number); });
}

afterwards longer(const raw_socket &client, const answer_frame &good, uint32_t number) {
    return send_changed(client, good, [&](answer_frame &frame) { frame.payload.append(number, '\0'); });
}

afterwards as_large_as_can_be(const raw_socket &client, const answer_frame &good, uint32_t) {
    answer_frame large = good;
    large.header.payload_size = largest_payload;
    send_in_memory_file(client, large);
    return afterwards::goes_on;
}

afterwards all_ones(const raw_socket &client, const answer_frame &good, uint32_t) {
    return send_changed(client, good, [](answer_frame &frame) { frame.payload.assign(frame.payload.size(), '\xff'); });
}

afterwards with_a_status_of_cmi(const raw_socket &client, const answer_frame &good, uint32_t number) {
    return send_changed(client, good, [&](answer_frame &frame) { frame.header.cmi_word = number; });
}

const std::vector<misdeed> plain_misdeeds{
    {"twice", outcome::good, twice},
    {"in_a_memory_file", outcome::good, in_a_memory_file},
    {"with_another_opcode", outcome::good, with_another_opcode},
    {"with_another_message_id", outcome::good, with_another_message_id},
    {"and_closes", outcome::good, and_closes},
    {"late", outcome::times_out, late},
    {"never", outcome::times_out, never},
    {"to_the_request_before", outcome::times_out, to_the_request_before},
    {"of_the_other_kind", outcome::times_out, of_the_other_kind},
    {"to_no_request", outcome::protocol_error, to_no_request},
    {"to_a_request_of_no_connection", outcome::protocol_error, to_a_request_of_no_connection},
    {"closes_instead", outcome::reset, closes_instead},
    {"closes_in_the_middle", outcome::protocol_error, closes_in_the_middle},
    {"longer", outcome::longer, longer, 1},
    {"longer", outcome::longer, longer, 4},
    {"longer", outcome::longer, longer, 1000},
    {"as_large_as_can_be", outcome::longer, as_large_as_can_be},
    {"all_ones", outcome::ones, all_ones},
    {"with_a_status_of_cmi", outcome::refused, with_a_status_of_cmi, 0x40290009},
};

// Every length up to the end of a header; of what follows, the lengths around the ends of what answers are made of.
std::set<uint32_t> cuts_of(uint32_t size) {
    constexpr uint32_t longest_header = 18;
    std::set<uint32_t> cuts;
    for (uint32_t length = 0; length < std::min(size, longest_header); ++length) cuts.insert(length);
    for (const uint32_t end : {59u, 176u, 197u, 275u, 386u, 764u, size / 2, size}) {
        for (uint32_t length = end - 1; length != end + 2; ++length) {
            if (length < size) cuts.insert(length);
        }
    }
    return cuts;
}

// To read the largest answers takes too long for all that.
bool is_large(uint32_t size) { return size > largest_in_packet; }

}  // namespace

void send(const raw_socket &client, const answer_frame &frame) {
    if (is_large(frame.header.payload_size)) return send_in_memory_file(client, frame);
    client.send(bytes_of(frame.header, frame.payload));
}

std::vector<misdeed> misdeeds(uint32_t size) {
    std::vector<misdeed> all = plain_misdeeds;
    for (uint32_t i = 0; i < hostile_frames.size(); ++i)
        all.push_back({hostile_frames[i].name, outcome::protocol_error, hostile, i});
    for (const uint32_t length : is_large(size) ? std::set{0u, 8u, size - 1} : cuts_of(size))
        all.push_back({"cut", outcome::cut, cut, length});
    return all;
}

}  // namespace faults
