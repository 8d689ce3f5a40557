// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <cstring>
#include <fstream>

#include "command_test.h"
#include "output/render.h"
#include "port_mgr/status.h"
#include "sff8472/diagnostics.h"
#include "sff8472/page_layout.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using sff8472::serial_id::diagnostic_type;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

void set_text(pm_fcot_info_t &record, sff8472::field of, const char *text) {
    std::memset(record.serial_id + of.offset, ' ', of.size);
    std::memcpy(record.serial_id + of.offset, text, std::min(std::strlen(text), of.size));
}

void set_word(uint8_t *at, uint16_t word) {
    at[0] = static_cast<uint8_t>(word >> 8);
    at[1] = static_cast<uint8_t>(word);
}

uint8_t sum_of(const uint8_t *begin, size_t count) {
    uint8_t sum = 0;
    for (size_t i = 0; i < count; ++i) sum = static_cast<uint8_t>(sum + begin[i]);
    return sum;
}

void set_identity(pm_fcot_info_t &record) {
    using namespace sff8472::serial_id;
    record.serial_id[identifier] = 0x03;
    record.serial_id[connector] = 0x07;
    record.serial_id[fc_technology_and_cable] = 0x40;
    record.serial_id[bit_rate] = 85;
    record.serial_id[length_om3] = 15;
    record.serial_id[length_om2] = 5;
    set_text(record, vendor_name, "ACME OPTICS");
    const uint8_t oui[] = {0x00, 0x1b, 0x21};
    std::memcpy(record.serial_id + vendor_oui.offset, oui, sizeof oui);
    set_text(record, part_number, "SFP-8G-SW");
    set_text(record, revision, "A1");
    set_text(record, serial_number, "ACM240517");
    set_text(record, date_code, "240517L7");
    set_word(record.serial_id + wavelength, 850);
    record.serial_id[diagnostic_type] = 0x68;
    record.serial_id[base_checksum] = sum_of(record.serial_id, base_checksum);
    record.serial_id[extended_checksum] = sum_of(record.serial_id + options, extended_checksum - options);
}

// High alarm, low alarm, high warning, low warning, as the page has them, and the reading.
void set_quantity(pm_fcot_info_t &record, size_t quantity, const std::array<uint16_t, 4> &thresholds,
                  uint16_t reading) {
    for (size_t i = 0; i < thresholds.size(); ++i) set_word(record.diagnostics + quantity * 8 + i * 2, thresholds[i]);
    set_word(record.diagnostics + sff8472::diagnostic::readings + quantity * 2, reading);
}

// A transceiver without anything out of its thresholds.
pm_fcot_info_t transceiver_in(const char *name) {
    pm_fcot_info_t record{};
    record.if_index = index_named(name);
    record.flags = PM_FCOT_PRESENT | PM_FCOT_DIAGNOSTICS;
    record.layout = PM_FCOT_LAYOUT_A;
    set_identity(record);
    set_quantity(record, 0, {75 * 256, 0xfb00, 70 * 256, 0}, 35 * 256 + 128);
    set_quantity(record, 1, {36300, 29700, 34650, 31350}, 33010);
    set_quantity(record, 2, {5250, 1000, 4250, 1250}, 3125);
    set_quantity(record, 3, {10000, 1000, 7943, 1585}, 5012);
    set_quantity(record, 4, {10001, 100, 7944, 251}, 3981);
    return record;
}

pm_fcot_info_t empty_port(const char *name) {
    pm_fcot_info_t record{};
    record.if_index = index_named(name);
    return record;
}

// What a line card tells: the quantities in order, five words each that begin at 1001, 2001 and so on.
pm_sfp_diag_info_t line_card_words() {
    pm_sfp_diag_info_t info{};
    pm_sfp_quantity_t quantities[5];
    for (uint32_t i = 0; i < 5; ++i) {
        const uint32_t first = 1000 * (i + 1) + 1;
        quantities[i] = {first, first + 1, first + 2, first + 3, first + 4};
    }
    std::memcpy(reinterpret_cast<uint8_t *>(&info) + offsetof(pm_sfp_diag_info_t, temperature), quantities,
                sizeof quantities);
    return info;
}

class show_transceiver : public command_test {
  protected:
    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "interface", "transceiver"});
        return command_test::run(std::move(words));
    }

    static json first_object(std::vector<const char *> words) {
        words.push_back("--json");
        return json::parse(run(std::move(words)).output)["interfaces"].at(0);
    }

    static void plug_in(const char *name) { the_switch.transceivers[name] = transceiver_in(name); }
};

TEST_F(show_transceiver, has_a_line_a_port) {
    exist({"fc1/1", "fc1/2", "Ethernet2/1", "mgmt0"});
    plug_in("fc1/1");
    the_switch.transceivers["fc1/2"] = empty_port("fc1/2");
    plug_in("Ethernet2/1");
    const auto outcome = run({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.output,
        "Interface    Type                  Vendor       Part number  Serial number  nm   °C     V      mA     TX "
        "dBm/mW     RX dBm/mW\n"
        "fc1/1        SFP short wave laser  ACME OPTICS  SFP-8G-SW    ACM240517      850  35.50  3.301  6.250  "
        "-3.00/0.5012  -4.00/0.3981\n"
        "fc1/2        not present\n"
        "Ethernet2/1  SFP short wave laser  ACME OPTICS  SFP-8G-SW    ACM240517      850  35.50  3.301  6.250  "
        "-3.00/0.5012  -4.00/0.3981\n");
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "transceivers fc1/1 fc1/2", "transceivers Ethernet2/1"));
}

TEST_F(show_transceiver, asks_for_pages_of_what_takes_one) {
    std::vector<std::string> names;
    for (int port = 1; port <= 70; ++port) names.push_back("fc1/" + std::to_string(port));
    for (const std::string &name : names) {
        exist({name.c_str()});
        plug_in(name.c_str());
    }
    exist({"Ethernet2/1.100", "loopback1", "port-channel5"});
    EXPECT_EQ(run({}).status, 0);
    ASSERT_EQ(the_switch.asked.size(), 3u);
    EXPECT_THAT(the_switch.asked[1], testing::EndsWith(" fc1/64"));
    EXPECT_EQ(the_switch.asked[2], "transceivers fc1/65 fc1/66 fc1/67 fc1/68 fc1/69 fc1/70");
}

TEST_F(show_transceiver, shows_those_named_in_their_order) {
    exist({"fc1/1", "fc1/2", "mgmt0"});
    plug_in("fc1/1");
    plug_in("fc1/2");
    const auto outcome = run({"mgmt0", "fc1/2-9", "fc1/1", "fc1/2"});
    EXPECT_EQ(outcome.status, 0);
    const size_t first = outcome.output.find("\nmgmt0      takes none\nfc1/2      SFP");
    EXPECT_NE(first, std::string::npos) << outcome.output;
    EXPECT_THAT(outcome.output.substr(first + 1), AllOf(HasSubstr("\nfc1/1 "), HasSubstr("\nfc1/2 ")));
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 4) << "each once";
}

TEST_F(show_transceiver, names_what_does_not_exist) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    const auto outcome = run({"fc9/1-4", "fc1/1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fc9/1-4"));
    EXPECT_THAT(outcome.output, HasSubstr("\nfc1/1 "));
}

TEST_F(show_transceiver, marks_warnings_and_alarms) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    pm_fcot_info_t &record = the_switch.transceivers["fc1/1"];
    set_word(record.diagnostics + sff8472::diagnostic::readings, 71 * 256);
    set_word(record.diagnostics + sff8472::diagnostic::readings + 8, 0);
    EXPECT_THAT(run({}).output, HasSubstr("  ! 71.00  3.301  6.250  -3.00/0.5012  !! -/0.0000\n"));
    set_word(record.diagnostics + sff8472::diagnostic::readings, 0xfa00);
    set_word(record.diagnostics + sff8472::diagnostic::readings + 6, 1001);
    EXPECT_THAT(run({}).output, HasSubstr("  !! -6.00  3.301  6.250  ! -10.00/0.1001  !! -/0.0000\n"));
}

TEST_F(show_transceiver, colours_warnings_and_alarms) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    pm_fcot_info_t &record = the_switch.transceivers["fc1/1"];
    set_word(record.diagnostics + sff8472::diagnostic::readings, 71 * 256);
    set_word(record.diagnostics + sff8472::diagnostic::readings + 8, 99);
    std::vector<const char *> words{"pmctl", "show", "interface", "transceiver"};
    const auto call = pmctl::parse_command_line(static_cast<int>(words.size()), words.data());
    EXPECT_THAT(pmctl::carry_out(call, {.colour = true}).output,
                AllOf(HasSubstr("\033[33m! 71.00\033[0m"), HasSubstr("\033[31m!! -20.04/0.0099\033[0m")));
}

TEST_F(show_transceiver, has_no_readings_without_diagnostics) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    the_switch.transceivers["fc1/1"].flags = PM_FCOT_PRESENT;
    EXPECT_THAT(run({}).output, HasSubstr("  850  -   -  -   -          -\n"));
    EXPECT_THAT(run({"details"}).output, EndsWith("\n    Diagnostics           none\n"));
    EXPECT_TRUE(first_object({}).at("temperature").is_null());
}

TEST_F(show_transceiver, shows_texts_of_any_bytes) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    set_text(the_switch.transceivers["fc1/1"], sff8472::serial_id::vendor_name, "A\033[2J\xff\nB");
    set_text(the_switch.transceivers["fc1/1"], sff8472::serial_id::part_number, "");
    set_text(the_switch.transceivers["fc1/1"], sff8472::serial_id::date_code, "240517\a\a");
    for (const auto &output : {run({}).output, run({"details"}).output})
        EXPECT_THAT(output, AllOf(HasSubstr("A?[2J\xef\xbf\xbd?B"), Not(HasSubstr("\033")), Not(HasSubstr("\a"))));
    EXPECT_EQ(first_object({}).at("vendor"), "A\033[2J\xef\xbf\xbd\nB");
}

TEST_F(show_transceiver, shows_fractions_of_wavelengths) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    pm_fcot_info_t &record = the_switch.transceivers["fc1/1"];
    record.serial_id[sff8472::serial_id::identifier] = 0x0b;
    set_word(record.serial_id + sff8472::serial_id::wavelength, 1550);
    record.serial_id[sff8472::serial_id::wavelength_fraction] = 9;
    EXPECT_THAT(run({}).output, HasSubstr("  1550.09  "));
    EXPECT_EQ(first_object({}).at("wavelength"), 1550.09);
    set_word(record.serial_id + sff8472::serial_id::wavelength, 0);
    record.serial_id[sff8472::serial_id::wavelength_fraction] = 0;
    EXPECT_TRUE(first_object({}).at("wavelength").is_null());
}

TEST_F(show_transceiver, names_requests_that_fail_and_goes_on) {
    exist({"fc1/1", "Ethernet2/1", "Ethernet2/2"});
    plug_in("Ethernet2/1");
    the_switch.transceiver_statuses["fc1/1"] = PM_ERR_REJECTED;
    const auto outcome = run({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/1: request rejected (PM_ERR_REJECTED, 0x40290009)",
                                              "Ethernet2/2: it is not in the answer"));
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("\nEthernet2/1 "), Not(HasSubstr("\nEthernet2/2 "))));
}

TEST_F(show_transceiver, says_that_an_answer_was_lost) {
    exist({"fc1/1", "fc1/2"});
    the_switch.transceivers_are_lost = true;
    EXPECT_THAT(
        run({}).messages,
        ElementsAre("fc1/1 and 1 more: invalid parameter, or malformed answer (PM_ERR_INVALID_PARAM, 0x40290003)"));
}

TEST_F(show_transceiver, ends_when_the_switch_does_not_answer) {
    exist({"fc1/1", "Ethernet2/1"});
    the_switch.transceiver_statuses["fc1/1"] = ETIMEDOUT;
    const auto outcome = run({"--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/1: Connection timed out"));
    EXPECT_EQ(outcome.output, "{\n  \"interfaces\": []\n}\n");
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "transceivers fc1/1"));
}

TEST_F(show_transceiver, details_show_everything) {
    exist({"fc1/1", "fc1/2"});
    plug_in("fc1/1");
    the_switch.transceivers["fc1/2"] = empty_port("fc1/2");
    const auto outcome = run({"details", "fc1/1-2", "fc1/2"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, R"(fc1/1
  Identification
    Form                     SFP
    Technology               short wave laser
    Connector                LC
    Vendor                   ACME OPTICS
    Vendor OUI               00:1b:21
    Part number              SFP-8G-SW
    Revision                 A1
    Serial number            ACM240517
    Date of manufacture      2024-05-17
    Lot                      L7
    Wavelength (nm)          850
    Bit rate (MBd)           8500
    Checksums                right
    Reach, OM3 fibre (m)     150
    Reach, OM2 fibre (m)     50
  Diagnostics
    Read by                  port manager
    Read for (s)             -
    Calibration              internal
    Alarms                   none
    Warnings                 none
    Quantity                 Reading           State   High alarm   High warning  Low warning    Low alarm
    Temperature (°C)         35.50             normal  75.00        70.00         0.00           -5.00
    Voltage (V)              3.301             normal  3.630        3.465         3.135          2.970
    Bias current (mA)        6.250             normal  10.500       8.500         2.500          2.000
    Transmit power (dBm/mW)  -3.00/0.5012      normal  0.00/1.0000  -1.00/0.7943  -8.00/0.1585   -10.00/0.1000
    Receive power (dBm/mW)   -4.00/0.3981      normal  0.00/1.0001  -1.00/0.7944  -16.00/0.0251  -20.00/0.0100

fc1/2
  Transceiver              not present
)");
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "transceivers fc1/1 fc1/2", "diagnostics fc1/1"));
}

TEST_F(show_transceiver, details_take_the_readings_of_the_line_card) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    pm_sfp_diag_info_t info = line_card_words();
    info.flags = 1;
    info.temperature.value = static_cast<uint32_t>(-256);
    info.rx_power.value = UINT32_MAX;
    the_switch.readings["fc1/1"] = {0, info, pm_sfp_diag_extra_t{0x0080, 0x2000, 12345678901}};
    const std::string output = run({"details"}).output;
    EXPECT_THAT(output, HasSubstr("Read by                  line card\n"));
    EXPECT_THAT(output, HasSubstr("Read for (s)             12345678.901\n"));
    EXPECT_THAT(output, HasSubstr("Calibration              external\n"));
    EXPECT_THAT(output, HasSubstr("Alarms                   rx power high\n"));
    EXPECT_THAT(output, HasSubstr("Warnings                 voltage high\n"));
    const json object = first_object({"details"});
    EXPECT_EQ(object.at("age"), 12345678901);
    EXPECT_EQ(object.at("temperature"), -1.0);
    EXPECT_EQ(object.at("temperature_state"), "normal");
    EXPECT_EQ(object.at("voltage"), 0.2001);
    EXPECT_EQ(object.at("voltage_high_alarm"), 0.2002);
    EXPECT_EQ(object.at("voltage_high_warning"), 0.2003);
    EXPECT_EQ(object.at("voltage_low_warning"), 0.2004);
    EXPECT_EQ(object.at("voltage_low_alarm"), 0.2005);
    EXPECT_EQ(object.at("voltage_state"), "high warning");
    EXPECT_EQ(object.at("bias"), 6.002);
    EXPECT_EQ(object.at("tx_power"), 0.4001);
    EXPECT_EQ(object.at("rx_power"), 214748.3647);
    EXPECT_EQ(object.at("rx_power_low_alarm"), 0.5005);
    EXPECT_EQ(object.at("rx_power_state"), "high alarm");
    EXPECT_EQ(object.at("alarms"), json({"rx power high"}));
    EXPECT_EQ(object.at("warnings"), json({"voltage high"}));
}

TEST_F(show_transceiver, details_judge_readings_of_a_line_card_that_does_not) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    pm_sfp_diag_info_t info = line_card_words();
    info.voltage.value = 3000;
    the_switch.readings["fc1/1"] = {0, info, std::nullopt};
    const json object = first_object({"details"});
    EXPECT_EQ(object.at("read_by"), "line card");
    EXPECT_EQ(object.at("voltage_state"), "high alarm");
    EXPECT_TRUE(object.at("age").is_null());
    EXPECT_EQ(object.at("is_externally_calibrated"), false);
}

TEST_F(show_transceiver, details_do_without_a_line_card) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    for (const uint32_t status : {PM_ERR_REJECTED, uint32_t{ETIMEDOUT}, uint32_t{EHOSTUNREACH}}) {
        the_switch.readings["fc1/1"] = {status, {}, std::nullopt};
        const auto outcome = run({"details"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.output, HasSubstr("Read by                  port manager\n"));
    }
}

TEST_F(show_transceiver, details_wait_once_for_a_line_card_that_hangs) {
    exist({"fc1/1", "fc1/2", "fc2/1"});
    for (const char *name : {"fc1/1", "fc1/2", "fc2/1"}) {
        plug_in(name);
        the_switch.readings[name].status = ETIMEDOUT;
    }
    EXPECT_EQ(run({"details"}).status, 0);
    EXPECT_THAT(the_switch.asked,
                ElementsAre("brief", "transceivers fc1/1 fc1/2 fc2/1", "diagnostics fc1/1", "diagnostics fc2/1"));
}

TEST_F(show_transceiver, details_end_when_a_signal_comes) {
    exist({"fc1/1", "fc1/2"});
    plug_in("fc1/1");
    plug_in("fc1/2");
    the_switch.readings["fc1/1"] = {EINTR, {}, std::nullopt};
    EXPECT_EQ(run({"details"}).status, 1);
    EXPECT_THAT(the_switch.asked, Not(Contains("diagnostics fc1/2")));
}

TEST_F(show_transceiver, has_one_shape_in_json) {
    exist({"fc1/1", "fc1/2", "mgmt0"});
    plug_in("fc1/1");
    the_switch.transceivers["fc1/2"] = empty_port("fc1/2");
    const json ports = json::parse(run({"fc1/1-2", "mgmt0", "--json"}).output)["interfaces"];
    ASSERT_EQ(ports.size(), 3u);
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-interface-transceiver.schema.json");
    for (const json &port : ports) schema.expect_described("interface", port);
    EXPECT_EQ(ports[1].at("takes_transceiver"), true);
    EXPECT_EQ(ports[1].at("is_present"), false);
    EXPECT_EQ(ports[2].at("takes_transceiver"), false);
    for (const auto &[key, value] : ports[2].items())
        EXPECT_TRUE(value.is_null() || key == "if_index" || key == "name" || key == "takes_transceiver" ||
                    key == "is_present")
            << key;
    EXPECT_EQ(ports[0].at("tx_power_dbm"), -3.0);
    EXPECT_EQ(ports[0].at("tx_power_low_warning_dbm"), -8.0);
    EXPECT_EQ(ports[0].at("reaches"), json({"150 m of OM3 fibre", "50 m of OM2 fibre"}));
}

TEST_F(show_transceiver, has_every_key_in_the_manual) {
    std::ifstream file(DOCUMENTS "/pmctl.md");
    const std::string manual(std::istreambuf_iterator<char>(file), {});
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-interface-transceiver.schema.json");
    for (const auto &[key, property] : schema.definition("interface").at("properties").items())
        EXPECT_THAT(manual, HasSubstr("| `" + key + "` | ")) << key;
}

TEST_F(show_transceiver, has_no_level_of_no_power_in_json) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    set_word(the_switch.transceivers["fc1/1"].diagnostics + sff8472::diagnostic::readings + 8, 0);
    const json object = first_object({});
    EXPECT_EQ(object.at("rx_power"), 0.0);
    EXPECT_TRUE(object.at("rx_power_dbm").is_null());
}

TEST_F(show_transceiver, calibrates_what_the_transceiver_does_not) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    pm_fcot_info_t &record = the_switch.transceivers["fc1/1"];
    record.serial_id[diagnostic_type] = 0x58;
    const size_t voltage_slope = sff8472::diagnostic::calibration[static_cast<size_t>(sff8472::quantity::voltage)];
    set_word(record.diagnostics + voltage_slope, 512);
    set_word(record.diagnostics + voltage_slope + 2, 10);
    const json object = first_object({});
    EXPECT_EQ(object.at("is_externally_calibrated"), true);
    EXPECT_EQ(object.at("voltage"), 6.5535) << "at the end of its scale";
    EXPECT_EQ(object.at("voltage_low_alarm"), 5.941);
}

TEST_F(show_transceiver, tells_that_it_reaches_farther_than_its_page_can_count) {
    exist({"fc1/1"});
    plug_in("fc1/1");
    the_switch.transceivers["fc1/1"].serial_id[sff8472::serial_id::length_om3] = 255;
    EXPECT_THAT(run({"details", "fc1/1"}).output, HasSubstr("Reach, OM3 fibre (m)     >2540\n"));
    EXPECT_EQ(first_object({"fc1/1"}).at("reaches"), json({">2540 m of OM3 fibre", "50 m of OM2 fibre"}));
}

}  // namespace
