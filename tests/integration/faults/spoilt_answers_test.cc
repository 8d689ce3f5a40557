// SPDX-License-Identifier: Apache-2.0
// A switch that answers late, twice, to the wrong request, half, too much, rubbish or never: every call returns within
// its wait and says what became of it, leaves nothing behind, and the next one on the same handle is answered.
#include <execinfo.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <optional>

#include "exchange_calls.h"
#include "footprint.h"
#include "integration/virtual_switch/virtual_switch_test.h"
#include "man_in_the_middle.h"
#include "platform_dev/mts_dev.h"
#include "short_waits.h"
#include "support/captured_stdout.h"

using namespace faults;

namespace {

// How a function, or the parser behind it, takes an answer that is not as it should be.
struct reading {
    const char *call;            // as its name begins
    uint32_t header;             // bytes before the records, which are counted in the second word; or all it needs
    uint32_t record;             // bytes of each record
    uint32_t nothing;            // the status of an answer without payload
    uint32_t half;               // of one that is too short
    uint32_t ones = 0xffffffff;  // of one all of whose bits are set
    uint32_t longer = 0;         // of one that goes on behind its end
    uint32_t half_with_status = half;  // of one that is too short, but has a status
};

constexpr std::array readings{
    reading{"pm_send_get_port_info_brief", 8, 51, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    reading{"pm_get_port_info_brief", 8, 51, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    reading{"pm_send_get_port_info", 8, 189, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    reading{"pm_get_port_info", 8, 189, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    reading{"pm_send_get_next_port_info", 197, 0, PM_ERR_NO_PAYLOAD, PM_ERR_INVALID_PARAM},
    reading{"pm_get_next_port_info", 197, 0, PM_ERR_NO_PAYLOAD, PM_ERR_INVALID_PARAM},
    // Of these the caller reads the answer.
    reading{"pm_ips_send_receive", 4, 0, PM_ERR_NO_PAYLOAD, PM_ERR_NO_PAYLOAD},
    reading{"pm_get_module_resources", 4, 0, PM_ERR_NO_PAYLOAD, PM_ERR_NO_PAYLOAD},
    reading{"pm_get_if_index_listing", 4, 0, PM_ERR_NO_PAYLOAD, PM_ERR_NO_PAYLOAD},
    reading{"pm_get_startup_if_index_listing", 4, 0, PM_ERR_NO_PAYLOAD, PM_ERR_NO_PAYLOAD},
    reading{"pm_get_sfp_diag_info", 176, 0, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    // One of another size is reported and passed over.
    reading{"pm_get_clear_eth_stats", 320, 0, PM_ERR_FAILURE, PM_ERR_FAILURE, 0xffffffff, PM_ERR_FAILURE},
    reading{"pm_cmi_get_port_config", 8, 189, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    reading{"pm_cmi_get_module_interface_listing", 8, 189, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    reading{"pm_cmi_get_fcot_info", 8, 267, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM},
    // The status stays the result, without records.
    reading{"pm_get_next_port_fcot_info_with_ddm", 8, 267, PM_ERR_INVALID_PARAM, PM_ERR_INVALID_PARAM, 0xffffffff, 0,
            PM_ERR_FAILURE},
    reading{"pm_cmi_set_port_config", 8, 8, PM_ERR_NO_PAYLOAD, PM_ERR_INVALID_PARAM},
    reading{"pm_cli_config_sub_interface", 8, 0, PM_ERR_NO_PAYLOAD, PM_ERR_INVALID_PARAM},
    reading{"pm_snmp_config_sub_interface", 8, 0, PM_ERR_NO_PAYLOAD, PM_ERR_INVALID_PARAM},
    reading{"pm_cmi_config_sub_interface", 8, 0, PM_ERR_NO_PAYLOAD, PM_ERR_INVALID_PARAM},
    // Of this one only CMI's own status counts.
    reading{"pm_cli_config_loopback_interface", 0, 0, 0, 0, 0},
};

const reading &reading_of(const exchange_call &call) {
    const std::string_view name = call.name;
    return *std::ranges::find_if(readings, [name](const reading &known) { return name.starts_with(known.call); });
}

uint32_t status_of_cut(const reading &rule, uint32_t length, uint32_t records) {
    if (length >= rule.header + rule.record * records) return 0;
    if (length == 0) return rule.nothing;
    return length < sizeof(uint32_t) ? rule.half : rule.half_with_status;
}

// What the call is to return when its answer, which counts `records`, is spoilt.
uint32_t expected(const exchange_call &call, const misdeed &spoilt, uint32_t records) {
    const reading &rule = reading_of(call);
    switch (spoilt.learnt) {
        case outcome::good:
            return 0;
        case outcome::times_out:
            return failure_of(call, ETIMEDOUT);
        case outcome::protocol_error:
            return failure_of(call, EPROTO);
        case outcome::reset:
            return failure_of(call, ECONNRESET);
        case outcome::cut:
            return status_of_cut(rule, spoilt.number, records);
        case outcome::longer:
            return rule.longer;
        case outcome::ones:
            return rule.ones;
        case outcome::refused:
            return call.is_cmi ? spoilt.number : 0;
    }
    return 0;
}

class spoilt_answers : public runtime_dir_test {
  protected:
    // The first report of a failed check loads a library, and the first look-up opens the chassis database: both stay.
    spoilt_answers() {
        void *address = nullptr;
        backtrace(&address, 1);
        static_cast<void>(pm_get_mts_sap(index_of("port-channel5")));
    }

    uint32_t run(const exchange_call &call, mts_handle_t handle) {
        const uint32_t status = call.run(handle);
        output_.take();
        return status;
    }

    // Runs the call while time flies, until its wait is over. A service that is asked instead then has all of its time.
    std::chrono::steady_clock::time_point when_given_up(const exchange_call &call, mts_handle_t handle,
                                                        uint32_t expected) {
        std::optional<shortened_waits> shortened(std::in_place);
        std::chrono::steady_clock::time_point given_up;
        const auto give_up = [&](int) {
            if (shortened) given_up = std::chrono::steady_clock::now();
            shortened.reset();
        };
        const before_first_wait another_is_asked(give_up);
        EXPECT_EQ(run(call, handle), expected);
        give_up(-1);
        return given_up;
    }

    // Runs the call once with the misdeed, and then plainly on the same handle.
    void run_spoilt(const exchange_call &call, const misdeed &spoilt, mts_handle_t handle, uint32_t expected) {
        const uint32_t before = middle_.committed();
        middle_.spoil(call.opcode, spoilt);
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(call.wait_seconds);
        if (spoilt.learnt == outcome::times_out) {
            EXPECT_GE(when_given_up(call, handle, expected), limit);
        } else {
            EXPECT_EQ(run(call, handle), expected);
            EXPECT_LT(std::chrono::steady_clock::now(), limit);
        }
        asked_ = middle_.answer_sap();
        while (middle_.committed() == before && std::chrono::steady_clock::now() < limit) usleep(50);
        EXPECT_EQ(middle_.committed(), before + 1);
        EXPECT_EQ(run(call, handle), 0u) << "the next call";
    }

    // Does so on a handle of its own that is connected, and compares what is held with what was.
    void run_between_counts(const exchange_call &call, const misdeed &spoilt, uint32_t expected) {
        SCOPED_TRACE(std::string(call.name) + ", " + spoilt.name + " " + std::to_string(spoilt.number));
        const footprint before = footprint::now();
        const mts_handle_t handle = mts_dev_open();
        EXPECT_EQ(run(call, handle), 0u);
        const size_t connected = footprint::now().descriptors;
        run_spoilt(call, spoilt, handle, expected);
        const bool asked_another = asked_ != middle_.answer_sap();
        EXPECT_EQ(footprint::now().descriptors, connected + (asked_another ? 1 : 0));
        mts_dev_close(handle);
        EXPECT_THAT(take_set_waits(), testing::Contains(call.wait_seconds));
        expect_as(before);
    }

    // Commits every misdeed on answers to the call.
    void sweep(const exchange_call &call) {
        const mts_handle_t warm = mts_dev_open();
        ASSERT_EQ(run(call, warm), 0u);
        mts_dev_close(warm);
        EXPECT_EQ(middle_.answer_sap(), call.sap);
        EXPECT_THAT(take_set_waits(), testing::ElementsAre(call.wait_seconds));
        const uint32_t records = middle_.answer_word(1);
        for (const misdeed &spoilt : misdeeds(middle_.answer_size()))
            run_between_counts(call, spoilt, expected(call, spoilt, records));
    }

    void print_faults() {
        std::cerr << middle_.committed() << " answers spoilt\n";
        RecordProperty("faults", static_cast<int>(middle_.committed()));
    }

    // What a failed test keeps is not what the library leaves behind.
    static void expect_as(const footprint &before) {
        if (!HasFailure()) {
            EXPECT_EQ(footprint::now(), before);
        }
    }

    virtual_switch_process daemon_{director};
    man_in_the_middle middle_{getenv("MTS_RUNTIME_DIR")};
    support::captured_stdout output_;
    uint32_t asked_ = 0;  // which service answered the spoilt call at last
};

TEST_F(spoilt_answers, are_told_leave_nothing_and_harm_no_other_call) {
    for (const exchange_call &call : exchange_calls()) sweep(call);
    print_faults();
}

// Asks for the port channel's own record at the service that one of its members has.
uint32_t get_config_by_member(mts_handle_t handle) {
    const auto range = range_of("port-channel5", "port-channel5");
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    const uint32_t status =
        pm_cmi_get_port_config(handle, PM_CONFIG_GET_BY_MEMBER, 1, &range, &count, &records, cmi_wait);
    std::free(records);
    return status == 0 && count != 1 ? PM_ERR_FAILURE : status;
}

uint32_t get_next_by_member(mts_handle_t handle) {
    mts_msg_t answer{};
    uint32_t status = pm_get_next_port_info(handle, index_of("port-channel5"), &answer);
    if (status != 0) return status;
    uint32_t count = 0;
    pm_port_info_t *record = nullptr;
    status = pm_parse_get_next_port_info(&answer, &count, &record);
    mts_drop(handle, &answer);
    std::free(record);
    return status;
}

constexpr uint32_t member_wait = 5;
constexpr std::array member_queries{
    exchange_call{"pm_cmi_get_port_config", PM_SAP_CHANNEL_MEMBER, CMI_OPC_GET_CHANNEL_MEMBER, member_wait, false, true,
                  false, get_config_by_member},
    exchange_call{"pm_get_next_port_info", PM_SAP_CHANNEL_MEMBER, CMI_OPC_GET_CHANNEL_MEMBER, member_wait, false, true,
                  false, get_next_by_member},
};

// Without a member the Ethernet channel service is asked, as when the channel had none. Not so when the answer names
// none, and rubbish is taken for a member, whose service is the port manager.
uint32_t asked_behind(const misdeed &spoilt) {
    switch (spoilt.learnt) {
        case outcome::good:
        case outcome::longer:
        case outcome::ones:
            return PM_SAP_PORT_MANAGER;
        case outcome::cut:
            return spoilt.number == 0 ? PM_SAP_PORT_MANAGER : PM_SAP_ETHERNET_CHANNEL;
        default:
            return PM_SAP_ETHERNET_CHANNEL;
    }
}

TEST_F(spoilt_answers, of_the_query_for_a_member_change_the_service_that_is_asked) {
    for (const exchange_call &call : member_queries) {
        for (const misdeed &spoilt : misdeeds(sizeof(if_index_t))) {
            run_between_counts(call, spoilt, 0);
            EXPECT_EQ(asked_, asked_behind(spoilt)) << call.name << ", " << spoilt.name;
        }
    }
    print_faults();
}

}  // namespace
