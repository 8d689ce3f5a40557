// SPDX-License-Identifier: Apache-2.0
// Settings as people type them.
#ifndef PMCTL_SETTINGS_SETTING_READER_H
#define PMCTL_SETTINGS_SETTING_READER_H

#include "settings/setting_table.h"

namespace pmctl {

// Reads "switchport", "mode", "E". Throws usage_error, with a suggestion where one is near: `beside` are other words
// that may have been meant at the beginning.
setting_change read_setting(std::span<const std::string> words, const std::vector<std::string> &beside = {});

// The words that may follow these in a setting, where they can be told.
std::vector<std::string> words_after(std::span<const std::string> words);

// A setting as help explains it.
struct setting_entry {
    std::string keywords;
    std::string values;
};
std::vector<setting_entry> setting_entries();

}  // namespace pmctl

#endif
