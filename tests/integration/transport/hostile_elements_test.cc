// SPDX-License-Identifier: Apache-2.0
// Answers whose element arrays claim more bytes than their payloads hold, as the library meets them.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "platform/if_index.h"
#include "port_mgr/port_mgr_common.h"
#include "protocol/line_card_node.h"
#include "support/captured_stdout.h"
#include "test_service.h"

namespace transport_test {

namespace {

std::string big_endian(uint32_t value, size_t width) {
    std::string bytes(width, '\0');
    for (size_t i = 0; i < width; ++i) bytes[width - 1 - i] = static_cast<char>(value >> 8 * i);
    return bytes;
}

std::string element(uint32_t type, uint32_t length, const std::string &value) {
    return big_endian(type, 2) + big_endian(length, 2) + value;
}

// An array that claims `bytes` bytes of elements, and a tenth of that many elements.
std::string array_of(uint32_t bytes, const std::string &elements) {
    return "TLV1" + big_endian(bytes / 10, 4) + big_endian(bytes, 4) + elements;
}

// Answers every request on one SAP of one node with the same payload.
class one_answer_service {
  public:
    one_answer_service(uint32_t at_node, uint32_t at_sap, std::string answer)
        : answer_(std::move(answer)), server_(mts_server_create()) {
        EXPECT_EQ(mts_server_add_service(server_, at_node, at_sap, serve, this), 0) << std::strerror(errno);
        thread_ = std::thread([this] { EXPECT_EQ(mts_server_run(server_), 0); });
    }
    one_answer_service(const one_answer_service &) = delete;
    one_answer_service &operator=(const one_answer_service &) = delete;
    ~one_answer_service() {
        mts_server_stop(server_);
        thread_.join();
        mts_server_destroy(server_);
    }

  private:
    static void serve(void *self, const mts_request_t *, mts_reply_t *reply) {
        const std::string &answer = static_cast<const one_answer_service *>(self)->answer_;
        answer.copy(static_cast<char *>(mts_reply_payload(reply, static_cast<uint32_t>(answer.size()))), answer.size());
    }

    std::string answer_;
    mts_server_t *server_;
    std::thread thread_;
};

if_index_t first_port() {
    if_index_t port = 0;
    EXPECT_EQ(if_index_phy_fc_port_init(&port, 0, 0, 0), 0);
    return port;
}

// Asks for the diagnostics of a port and is answered 176 bytes of readings and the array.
pm_sfp_diag_extra_t sfp_extra_from(const std::string &array) {
    const std::string readings = element(27, sizeof(pm_sfp_diag_info_t), std::string(sizeof(pm_sfp_diag_info_t), '\0'));
    uint8_t slot = 0;
    EXPECT_EQ(if_index_get_slot(first_port(), &slot), 0);
    const one_answer_service service(pm::line_card_node(slot), PM_SAP_SFP_DIAGNOSTICS, readings + array);
    const open_handle handle;
    const support::captured_stdout silence;
    pm_sfp_diag_info_t info;
    pm_sfp_diag_extra_t extra{};
    EXPECT_EQ(pm_get_sfp_diag_info(handle, first_port(), &info, &extra), 0u);
    return extra;
}

// Asks for the configuration of a port and is answered one record of 0x11 bytes and the array.
pm_port_info_t port_from(const std::string &array) {
    const std::string answer = big_endian(0, 4) + big_endian(1, 4) + std::string(189, '\x11') + array;
    const one_answer_service service(MTS_NODE_SUPERVISOR, pm_get_mts_sap(first_port()), answer);
    const open_handle handle;
    const support::captured_stdout silence;
    const pm_if_index_range_t range = {first_port(), first_port()};
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    EXPECT_EQ(pm_cmi_get_port_config(handle, 3, 1, &range, &count, &records, 0), 0u);
    EXPECT_EQ(count, 1u);
    if (count != 1) return {};
    const pm_port_info_t record = records[0];
    free(records);
    return record;
}

// The last bytes of a payload as the header of an element of the longest value, cut after each of its bytes.
const std::vector<std::string> cut_elements = {std::string("\x10", 1), std::string("\x10\x01", 2),
                                               std::string("\x10\x01\x01", 3), std::string("\x10\x01\x01\x00", 4),
                                               std::string("\x10\x01\xff\xff", 4)};

TEST_F(transport, sfp_answer_whose_array_claims_5000_bytes_is_read_to_its_end) {
    const std::string elements = element(80, 16, pattern(16)) + element(80, 4, pattern(4));
    const pm_sfp_diag_extra_t extra = sfp_extra_from(array_of(5000, elements));
    EXPECT_EQ(extra.alarms, 0x00010203u);
    EXPECT_EQ(extra.warnings, 0u) << "only zeros follow what travelled";
    for (const std::string &cut : cut_elements) sfp_extra_from(array_of(0xffff, cut));
}

TEST_F(transport, port_answer_whose_array_claims_5000_bytes_is_read_to_its_end) {
    const std::string mine(4, '\x11');
    const std::string elements = element(22, 8, mine + pattern(4)) + element(23, 8, mine);
    const pm_port_info_t record = port_from(array_of(5000, elements));
    EXPECT_EQ(record.bb_credit[4], 0x00010203u);
    EXPECT_EQ(record.auto_neg, 0u) << "only zeros follow what travelled";
    for (const std::string &cut : cut_elements) port_from(array_of(0xffff, cut));
}

}  // namespace

}  // namespace transport_test
