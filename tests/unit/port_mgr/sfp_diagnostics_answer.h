// SPDX-License-Identifier: Apache-2.0
// sfp_diagnostics_answer.h: what a line card answers about a transceiver, and the words that it becomes.
#ifndef UNIT_PORT_MGR_SFP_DIAGNOSTICS_ANSWER_H
#define UNIT_PORT_MGR_SFP_DIAGNOSTICS_ANSWER_H

#include <array>
#include <cstring>

#include "bytes.h"
#include "port_mgr/sfp_diagnostics.h"

namespace unit {

using sfp_words = std::array<uint32_t, 43>;

inline support::payload sfp_header(uint16_t type = 27, uint16_t length = 172) {
    return support::payload().be16(type).be16(length);
}

// Word i has the bytes 4i+1 to 4i+4, but for the status.
inline sfp_words sfp_readings(uint32_t status) {
    sfp_words words;
    for (uint32_t i = 0; i < words.size(); ++i) words[i] = 0x04040404 * i + 0x01020304;
    words[1] = status;
    return words;
}

inline support::payload sfp_answer(uint32_t status = 0) {
    support::payload answer = sfp_header();
    for (const uint32_t word : sfp_readings(status)) answer.be32(word);
    return answer;
}

// What a record holds when the line card tells a status.
inline sfp_words sfp_status_alone(uint32_t status) {
    sfp_words words{};
    words[1] = status;
    return words;
}

inline sfp_words words_of(const pm_sfp_diag_info_t &info) {
    sfp_words words;
    static_assert(sizeof words == sizeof info);
    std::memcpy(words.data(), &info, sizeof info);
    return words;
}

// Outputs full of rubbish.
struct sfp_outputs {
    sfp_outputs() {
        std::memset(&info, 0x5a, sizeof info);
        std::memset(&extra, 0x5a, sizeof extra);
        rubbish = words_of(info);
    }

    [[nodiscard]] bool is_extra_untouched() const {
        return extra.alarms == 0x5a5a5a5a && extra.warnings == 0x5a5a5a5a && extra.age == 0x5a5a5a5a5a5a5a5aU;
    }

    pm_sfp_diag_info_t info;
    pm_sfp_diag_extra_t extra;
    sfp_words rubbish;
};

}  // namespace unit

#endif
