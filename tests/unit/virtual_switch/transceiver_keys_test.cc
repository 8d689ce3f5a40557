// SPDX-License-Identifier: Apache-2.0
// The sections of a chassis file about transceivers, and the pages that come of them.
#include "chassis/transceiver_keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "chassis/default_transceiver.h"
#include "names.h"
#include "sff8472/checksum.h"
#include "sff8472/identification.h"

namespace {

using sff8472::identification;
using sff8472::reading;
using virtual_switch::chassis_model;
using virtual_switch::transceiver;

// The first line of `text` is line 25.
chassis_model parse(const std::string &text) {
    return virtual_switch::parse_chassis(R"([chassis]
name = "test"
type = 6
slots = 5
[[module]]
slot = 1
kind = "fc"
ports = 12
[[module]]
slot = 2
kind = "ethernet"
ports = 2
[[module]]
slot = 3
kind = "ips"
ports = 1
[[module]]
slot = 4
kind = "ethernet-sfp"
ports = 1
[[fcip]]
name = "fcip1"
slot = 3
port = 1
)" + text);
}

// The transceiver of fc1/1 in a section.
transceiver with(const std::string &keys) {
    return *parse("[[transceiver]]\nname = 'fc1/1'\n" + keys).plugged_into(index_of("fc1/1"));
}

identification identified(const std::string &keys) { return sff8472::identify(with(keys).serial_id); }

sff8472::readings readings_of(const transceiver &of) {
    return sff8472::read_diagnostics(of.diagnostics, of.is_externally_calibrated());
}

reading reading_of(const std::string &keys, size_t quantity) { return readings_of(with(keys))[quantity]; }

sff8472::level level_in(const transceiver &of, size_t quantity) {
    return level_of(flags_of(readings_of(of)), static_cast<sff8472::quantity>(quantity));
}

std::string complaint(const std::string &keys) {
    try {
        with(keys);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

std::string number_of(const chassis_model &model, const char *name) {
    return sff8472::identify(model.plugged_into(index_of(name))->serial_id).serial_number;
}

// --------------------------------------------------------------------------------------------------------- usual ones

TEST(usual_transceiver, goes_by_kind) {
    const chassis_model model = parse("");
    const std::tuple<const char *, const char *, const char *, uint32_t> table[] = {
        {"fc1/12", "short wave laser", "IOF00001012", 8500},
        {"Ethernet2/2", "10GBASE-SR", "IOE00002002", 10300},
        {"if26-4/1", "10GBASE-SR", "IOE00004001", 10300},
    };
    for (const auto &[name, technology, serial_number, bit_rate] : table) {
        const transceiver *const found = model.plugged_into(index_of(name));
        ASSERT_NE(found, nullptr) << name;
        const identification id = sff8472::identify(found->serial_id);
        EXPECT_EQ(id.identifier, "SFP");
        EXPECT_EQ(id.connector, "LC");
        EXPECT_EQ(id.technology, technology);
        EXPECT_EQ(id.serial_number, serial_number);
        EXPECT_EQ(id.bit_rate, bit_rate);
        EXPECT_EQ(id.wavelength, 85000u);
        EXPECT_TRUE(id.has_diagnostics);
        EXPECT_TRUE(id.checksums_are_right);
        EXPECT_EQ(found->serial_id[1], 4);
        EXPECT_EQ(found->serial_id[92], 0x68);
        EXPECT_TRUE(found->has_diagnostics);
        for (size_t i = 0; i < sff8472::quantities; ++i) EXPECT_EQ(level_in(*found, i), sff8472::level::normal) << i;
        for (const auto &[amplitude, period] : found->drifts) EXPECT_GT(amplitude * period, 0);
    }
    EXPECT_EQ(model.transceivers.size(), 12u + 2 + 1);
    for (const char *name : {"if13-3/1", "fcip1"}) EXPECT_EQ(model.plugged_into(index_of(name)), nullptr) << name;
    EXPECT_EQ(model.plugged_into(index_of("fc5/1")), nullptr);
}

TEST(usual_transceiver, is_gone_when_none_is_present) {
    EXPECT_EQ(parse("[[ports]]\nname = 'fc1/2'\nstate = 'no-sfp'").plugged_into(index_of("fc1/2")), nullptr);
    const chassis_model model =
        parse("[[ports]]\nname = 'fc1/2'\nfcot_present = 'no'\n[[transceiver]]\nname = 'fc1/2'");
    EXPECT_EQ(model.plugged_into(index_of("fc1/2")), nullptr);
    EXPECT_TRUE(model.transceivers.contains(index_of("fc1/2")));
}

TEST(usual_transceiver, is_what_a_section_does_not_change) {
    const identification id = identified("vendor = 'OTHER'");
    EXPECT_EQ(id.vendor, "OTHER");
    EXPECT_EQ(id.technology, "short wave laser");
    EXPECT_EQ(id.serial_number, "IOF00001001");
    EXPECT_TRUE(id.checksums_are_right);
}

// -------------------------------------------------------------------------------------------------------- serial page

TEST(page_keys, say_who_made_it) {
    const identification id = identified(
        "form = 'GBIC'\nconnector = 'SC'\nvendor = 'SIXTEEN LETTERS!'\noui = '01:aB:fe'\npart_number = 'PN-7'\n"
        "revision = 'R2.1'\nserial_number = 'ABCDEFGHIJKLMNOP'\ndate = '2031-12-09'\nlot = 'Q7'");
    EXPECT_EQ(id.identifier, "GBIC");
    EXPECT_EQ(id.connector, "SC");
    EXPECT_EQ(id.vendor, "SIXTEEN LETTERS!");
    EXPECT_THAT(id.oui, testing::ElementsAre(0x01, 0xab, 0xfe));
    EXPECT_EQ(id.part_number, "PN-7");
    EXPECT_EQ(id.revision, "R2.1");
    EXPECT_EQ(id.serial_number, "ABCDEFGHIJKLMNOP");
    EXPECT_EQ(id.date, "2031-12-09");
    EXPECT_EQ(id.lot, "Q7");
    EXPECT_TRUE(id.checksums_are_right);
    EXPECT_EQ(identified("date = '2031-12-09'").lot, "");
}

TEST(page_keys, take_what_goes_with_another_technology_away) {
    const transceiver bare = with("technology = '10GBASE-LR'");
    EXPECT_EQ(bare.serial_id[3], 0x20);
    for (const size_t offset : {6u, 7u, 8u, 9u, 10u, 14u, 15u, 16u, 17u, 18u, 19u, 60u, 61u, 62u})
        EXPECT_EQ(bare.serial_id[offset], 0) << offset;
    EXPECT_EQ(bare.serial_id[92], 0x68);
    const transceiver cable = with("technology = 'passive copper cable'\nlength_copper = 7");
    EXPECT_EQ(cable.serial_id[8], 0x04);
    EXPECT_EQ(cable.serial_id[18], 7);
    EXPECT_EQ(cable.serial_id[92], 0);
    EXPECT_EQ(cable.serial_id[94], 0);
    EXPECT_FALSE(cable.has_diagnostics);
    EXPECT_FALSE(with("technology = 'active cable'").has_diagnostics);
    EXPECT_THAT(cable.diagnostics, testing::Each(0));
    EXPECT_TRUE(with("technology = 'active cable'\ncalibration = 'internal'").has_diagnostics);
}

TEST(page_keys, say_how_fast_and_how_far) {
    const auto byte = [](const std::string &keys, size_t offset) { return with(keys).serial_id[offset]; };
    EXPECT_EQ(byte("fc_speeds = [1000, 2000, 4000, 8000, 10000, 16000, 32000]", 10), 0xfd);
    EXPECT_EQ(byte("fc_speeds = [16000]", 10), 0x20);
    EXPECT_EQ(byte("fc_speeds = [32000]", 10), 0x08);
    EXPECT_EQ(byte("bit_rate = 2125", 12), 21);
    EXPECT_EQ(byte("bit_rate = 25499", 12), 254);
    EXPECT_EQ(byte("bit_rate = 25500", 12), 255);
    EXPECT_EQ(byte("bit_rate = 25500", 66), 102);
    EXPECT_EQ(byte("bit_rate = 63750", 66), 255);
    EXPECT_EQ(byte("bit_rate = 4250", 66), 0);
    EXPECT_EQ(byte("length_single_mode = 10400", 14), 10);
    EXPECT_EQ(byte("length_single_mode = 10400", 15), 104);
    EXPECT_EQ(byte("length_single_mode = 80000", 15), 255);
    EXPECT_EQ(byte("length_om1 = 330", 17), 33);
    EXPECT_EQ(byte("length_om2 = 550", 16), 55);
    EXPECT_EQ(byte("length_om3 = 2540", 19), 254);
    EXPECT_EQ(byte("length_om4 = 400", 18), 40);
    EXPECT_EQ(byte("length_copper = 254", 18), 254);
    EXPECT_EQ(identified("wavelength = 1310").wavelength, 131000u);
    EXPECT_EQ(identified("wavelength = 1310.0").wavelength, 131000u);
    EXPECT_EQ(identified("wavelength = 1550.12\nform = 'DWDM-SFP'").wavelength, 155012u);
}

TEST(serial_numbers, count_up_in_a_section) {
    const chassis_model model = parse(
        "[[transceiver]]\nname = 'fc1/1-3'\nserial_number = 'A009'\n[[transceiver]]\nname = 'fc1/4-5'\n"
        "serial_number = 'B'\n[[transceiver]]\nname = 'fc1/6,fc1/8'\nserial_number = '9999999999999998'\n"
        "[[transceiver]]\nname = 'fc1/9-10'\nrevision = 'X'\n");
    EXPECT_EQ(number_of(model, "fc1/1"), "A009");
    EXPECT_EQ(number_of(model, "fc1/2"), "A010");
    EXPECT_EQ(number_of(model, "fc1/3"), "A011");
    EXPECT_EQ(number_of(model, "fc1/4"), "B");
    EXPECT_EQ(number_of(model, "fc1/5"), "B1");
    EXPECT_EQ(number_of(model, "fc1/8"), "9999999999999999");
    EXPECT_EQ(number_of(model, "fc1/10"), "IOF00001010");
    for (const auto &[if_index, at] : model.transceivers)
        EXPECT_TRUE(sff8472::identify(at.serial_id).checksums_are_right);
}

// --------------------------------------------------------------------------------------------------------- quantities

TEST(quantities, are_in_units_that_people_use) {
    const std::string keys =
        "temperature = { value = -12.5, high_alarm = 90, high_warning = 85.25, low_warning = -20, low_alarm = -40 }\n"
        "voltage = { value = 3.2999, high_alarm = 4, high_warning = 3.9, low_warning = 2, low_alarm = 1 }\n"
        "bias = { value = 7.5, high_alarm = 100, high_warning = 90, low_warning = 1, low_alarm = 0.5 }\n"
        "tx_power = { value = -3, high_alarm = 8.16, high_warning = 5, low_warning = -10, low_alarm = -20 }\n"
        "rx_power = { value = 0, high_alarm = 3, high_warning = 2, low_warning = -30, low_alarm = -40 }\n";
    const sff8472::readings wanted{{{-3200, 90 * 256, 21824, -20 * 256, -40 * 256},
                                    {32999, 40000, 39000, 20000, 10000},
                                    {3750, 50000, 45000, 500, 250},
                                    {5012, 65464, 31623, 1000, 100},
                                    {10000, 19953, 15849, 10, 1}}};
    const transceiver internal = with(keys);
    const transceiver external = with("calibration = 'external'\n" + keys);
    EXPECT_EQ(internal.serial_id[92], 0x68);
    EXPECT_EQ(external.serial_id[92], 0x58);
    EXPECT_EQ(external.serial_id[94], 8);
    for (size_t i = 0; i < wanted.size(); ++i) {
        const reading of_internal = readings_of(internal)[i];
        const reading of_external = readings_of(external)[i];
        for (const auto member : {&reading::value, &reading::high_alarm, &reading::high_warning, &reading::low_warning,
                                  &reading::low_alarm}) {
            EXPECT_EQ(of_internal.*member, wanted[i].*member) << i;
            EXPECT_NEAR(of_external.*member, wanted[i].*member, 1) << i;
        }
    }
}

// What the standard asks of those that calibrate their readings themselves.
TEST(quantities, have_neutral_constants_when_calibrated_internally) {
    const transceiver internal = with("");
    for (const size_t slope : {76u, 80u, 84u, 88u}) {
        EXPECT_EQ(internal.diagnostics[slope], 1);
        for (size_t i = 1; i < 4; ++i) EXPECT_EQ(internal.diagnostics[slope + i], 0);
    }
    EXPECT_EQ(internal.diagnostics[68], 0x3f);
    EXPECT_EQ(internal.diagnostics[69], 0x80);
    EXPECT_EQ(sff8472::read_diagnostics(internal.diagnostics, true),
              sff8472::read_diagnostics(internal.diagnostics, false));
}

TEST(quantities, of_externally_calibrated_ones_are_other_words) {
    const transceiver external = with("calibration = 'external'");
    for (size_t i = 0; i < sff8472::quantities; ++i) {
        EXPECT_GT(
            std::abs(sff8472::read_diagnostics(external.diagnostics, false)[i].value - readings_of(external)[i].value),
            100)
            << i;
    }
}

TEST(quantities, have_a_checksum) {
    for (const char *calibration : {"internal", "external"}) {
        const transceiver of = with("calibration = '" + std::string(calibration) + "'");
        EXPECT_EQ(of.diagnostics[95], sff8472::checksum(std::span(of.diagnostics).first(95)));
        EXPECT_NE(of.diagnostics[95], 0);
    }
}

TEST(quantities, keep_what_is_not_said) {
    const reading temperature = reading_of("temperature = { value = 50 }", 0);
    EXPECT_EQ(temperature.value, 50 * 256);
    EXPECT_EQ(temperature.high_alarm, 75 * 256);
    EXPECT_EQ(reading_of("temperature.value = 51", 0).value, 51 * 256);
    EXPECT_EQ(reading_of("bias = { value = 0 }", 2).value, 0);
}

TEST(quantities, may_lie_beyond_their_thresholds) {
    EXPECT_EQ(level_in(with("temperature = { value = 76 }"), 0), sff8472::level::high_alarm);
    EXPECT_EQ(level_in(with("rx_power = { value = -12 }"), 4), sff8472::level::low_warning);
}

TEST(quantities, drift) {
    const auto drift = [](const std::string &keys, size_t quantity) { return with(keys).drifts[quantity]; };
    EXPECT_EQ(drift("temperature = { drift = 1.5, period = 60 }", 0).amplitude, 384);
    EXPECT_EQ(drift("temperature = { drift = 1.5, period = 60 }", 0).period, 60);
    EXPECT_EQ(drift("voltage = { drift = 0.1 }", 1).amplitude, 1000);
    EXPECT_EQ(drift("bias = { drift = 2 }", 2).amplitude, 1000);
    EXPECT_EQ(drift("tx_power = { drift = 2.5 }", 3).amplitude, 2.5);
    EXPECT_EQ(drift("rx_power = { drift = 0 }", 4).amplitude, 0);
    EXPECT_EQ(drift("rx_power = { period = 7.5 }", 4).period, 7.5);
}

// ----------------------------------------------------------------------------------------------------------- mistakes

struct mistake {
    const char *keys;
    const char *complaint;  // behind "LINE: transceiver."
};

void PrintTo(const mistake &of, std::ostream *out) { *out << of.keys; }

class mistakes : public testing::TestWithParam<mistake> {};

TEST_P(mistakes, are_reported) {
    EXPECT_EQ(complaint(GetParam().keys), std::string("27: transceiver.") + GetParam().complaint);
}

const mistake bad_keys[] = {
    {"vendr = 'X'", "vendr: unknown key; did you mean 'vendor'?"},
    {"mtu = 1500", "mtu: unknown key"},
    {"form = 'SFQ'", "form: unknown word 'SFQ'; did you mean 'SFP'?"},
    {"connector = 7", "connector: must be a text, not a number"},
    {"technology = 'microwave'", "technology: unknown word 'microwave'"},
    {"fc_speeds = 8000", "fc_speeds: must be an array, not a number"},
    {"fc_speeds = [3000]", "fc_speeds: 3000 is no speed"},
    {"fc_speeds = [1, 2, 3, 4, 5, 6, 7, 8]", "fc_speeds: has more than 7 elements"},
    {"bit_rate = 63751", "bit_rate: 63751 is not in 0 to 63750"},
    {"bit_rate = 1.5", "bit_rate: must be a number, not a number with a fraction"},
    {"wavelength = 65536", "wavelength: 65536 is not in 0 to 65535"},
    {"wavelength = 1550.12", "wavelength: has a fraction, which only the form 'DWDM-SFP' can tell"},
    {"wavelength = nan", "wavelength: nan is not in 0 to 65535"},
    {"length_single_mode = 254001", "length_single_mode: 254001 is not in 0 to 254000"},
    {"length_om3 = 2541", "length_om3: 2541 is not in 0 to 2540"},
    {"length_copper = 255", "length_copper: 255 is not in 0 to 254"},
    {"vendor = 'SEVENTEEN LETTERS'", "vendor: is longer than 16 bytes"},
    {"vendor = 'M\u00fcller'", "vendor: holds a letter that is not ASCII"},
    {"part_number = \"a\\tb\"", "part_number: holds a control character"},
    {"revision = '12345'", "revision: is longer than 4 bytes"},
    {"serial_number = 77", "serial_number: must be a text, not a number"},
    {"lot = 'ABC'", "lot: is longer than 2 bytes"},
    {"oui = '02:50'", "oui: '02:50' is no OUI such as '02:50:4d'"},
    {"oui = '02-50-4d'", "oui: '02-50-4d' is no OUI such as '02:50:4d'"},
    {"oui = '02:50:4g'", "oui: '02:50:4g' is no OUI such as '02:50:4d'"},
    {"oui = '02:50:4dx'", "oui: '02:50:4dx' is no OUI such as '02:50:4d'"},
    {"date = '1999-05-17'", "date: '1999-05-17' is no date such as '2024-05-17'"},
    {"date = '2024-13-17'", "date: '2024-13-17' is no date such as '2024-05-17'"},
    {"date = '2024-00-17'", "date: '2024-00-17' is no date such as '2024-05-17'"},
    {"date = '2024-05-32'", "date: '2024-05-32' is no date such as '2024-05-17'"},
    {"date = '2024-05-00'", "date: '2024-05-00' is no date such as '2024-05-17'"},
    {"date = '2024/05/17'", "date: '2024/05/17' is no date such as '2024-05-17'"},
    {"date = ''", "date: '' is no date such as '2024-05-17'"},
    {"date = 2024-05-17", "date: must be a text, not a date or time"},
    {"calibration = 'both'", "calibration: unknown word 'both'"},
    {"pages = 7", "pages: must be a text, not a number"},
};
INSTANTIATE_TEST_SUITE_P(of_keys, mistakes, testing::ValuesIn(bad_keys));

const mistake bad_quantities[] = {
    {"temperature = 34", "temperature: must be a table, not a number"},
    {"temperature = { degrees = 34 }", "temperature.degrees: unknown key"},
    {"temperature = { value = 'hot' }", "temperature.value: must be a number, not a text"},
    {"temperature = { value = 128 }", "temperature.value: 128 is not in -128 to 127.99"},
    {"temperature = { value = -128.5 }", "temperature.value: -128.5 is not in -128 to 127.99"},
    {"voltage = { value = -0.1 }", "voltage.value: -0.1 is not in 0 to 6.5535"},
    {"bias = { value = 131.1 }", "bias.value: 131.1 is not in 0 to 131.07"},
    {"tx_power = { value = 8.2 }", "tx_power.value: 8.2 is not in -40 to 8.16"},
    {"rx_power = { value = -40.1 }", "rx_power.value: -40.1 is not in -40 to 8.16"},
    {"rx_power = { value = inf }", "rx_power.value: inf is not in -40 to 8.16"},
    {"temperature = { drift = -1 }", "temperature.drift: -1 is not in 0 to 100"},
    {"temperature = { period = 0 }", "temperature.period: 0 is not in 1 to 86400"},
    {"temperature = { period = true }", "temperature.period: must be a number, not true or false"},
    {"temperature = { high_alarm = 69 }",
     "temperature.high_alarm: the thresholds are not in order: high_alarm, high_warning, low_warning, low_alarm"},
    {"temperature = { low_alarm = 1 }",
     "temperature.high_alarm: the thresholds are not in order: high_alarm, high_warning, low_warning, low_alarm"},
    {"temperature = { low_warning = 70.5 }",
     "temperature.high_alarm: the thresholds are not in order: high_alarm, high_warning, low_warning, low_alarm"},
};
INSTANTIATE_TEST_SUITE_P(of_quantities, mistakes, testing::ValuesIn(bad_quantities));

TEST(mistakes, are_reported_where_they_concern_several_keys) {
    EXPECT_EQ(complaint("calibration = 'none'\nbias = { value = 1 }"),
              "28: transceiver.bias: a transceiver without diagnostics reads nothing");
    EXPECT_EQ(complaint("technology = '1000BASE-T'\nbias = { value = 1 }"),
              "28: transceiver.bias: a transceiver without diagnostics reads nothing");
}

std::string complaint_of_sections(const std::string &text) {
    try {
        parse(text);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

TEST(mistakes, are_reported_of_ports) {
    const auto named = [](const std::string &name) {
        return complaint_of_sections("[[transceiver]]\nname = '" + name + "'");
    };
    EXPECT_EQ(named("fc1/13"),
              "26: transceiver.name: 'fc1/13' does not exist: slot 1 has a module of kind 'fc' with 12 ports");
    EXPECT_EQ(named("fcip1"), "26: transceiver.name: 'fcip1' takes no transceiver");
    EXPECT_EQ(named("if13-3/1"), "26: transceiver.name: 'if13-3/1' takes no transceiver");
    EXPECT_EQ(named("fc1/1, fc1/1"), "26: transceiver.name: 'fc1/1' has a transceiver already");
    EXPECT_EQ(complaint_of_sections("[[transceiver]]\nvendor = 'X'"), "25: transceiver.name: is missing");
    EXPECT_EQ(complaint_of_sections("[[transceiver]]\nname = 'fc1/1'\n[[transceiver]]\nname = 'fc1/1'"),
              "28: transceiver.name: 'fc1/1' has a transceiver already");
    EXPECT_EQ(complaint_of_sections("[[transceiver]]\nname = 'fc1/1-2'\nserial_number = '9999999999999999'"),
              "27: transceiver.serial_number: has no room for a running number");
    EXPECT_EQ(complaint_of_sections("[transceiver]\nname = 'fc1/1'"),
              "25: transceiver: must be written [[transceiver]]");
}

}  // namespace
