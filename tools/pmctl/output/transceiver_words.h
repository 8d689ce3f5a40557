// SPDX-License-Identifier: Apache-2.0
// What transceivers tell, in the words and units of people.
#ifndef PMCTL_OUTPUT_TRANSCEIVER_WORDS_H
#define PMCTL_OUTPUT_TRANSCEIVER_WORDS_H

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "switch/transceivers.h"

namespace pmctl {

// "00:1b:21".
std::string oui_of(const sff8472::identification &of);

// "150", ">2540" where the page can count no farther.
std::string metres_text(const sff8472::reach &of);

// Who read the transceiver.
const char *reader_of(const transceiver_diagnostics &of);

struct measured_quantity {
    sff8472::quantity of;
    const char *name;
    const char *label;   // with the unit
    const char *column;  // where room is scarce
    const char *key;     // in JSON
    double in_one;       // readings in one unit
    int decimals;
    bool is_power;  // which has a level in dBm, too
};

// What a reading is compared with.
struct threshold {
    const char *label;
    const char *key;  // in JSON
    int32_t sff8472::reading::*number;
};

inline constexpr threshold thresholds[] = {
    {"High alarm", "high_alarm", &sff8472::reading::high_alarm},
    {"High warning", "high_warning", &sff8472::reading::high_warning},
    {"Low warning", "low_warning", &sff8472::reading::low_warning},
    {"Low alarm", "low_alarm", &sff8472::reading::low_alarm},
};

extern const std::array<measured_quantity, sff8472::quantities> measured_quantities;

// A reading or a threshold in the quantity's unit.
double in_unit(const measured_quantity &of, int32_t number);

// The level of a power, to hundredths of a dBm; no power has none.
std::optional<double> dbm(int32_t number);

// "normal", "high alarm" and so on.
const char *level_words(sff8472::level level);

// The quantities that alarms or warnings are raised of: "temperature high", "rx power low".
std::vector<std::string> raised_names(uint16_t flags);

// "3.300"; of powers both, "-3.00/0.5012".
std::string quantity_text(const measured_quantity &of, int32_t number);

}  // namespace pmctl

#endif
