// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_SETTINGS_TEXT_FILE_H
#define PMCTL_SETTINGS_TEXT_FILE_H

#include <string>

namespace pmctl {

struct text_file {
    std::string name;  // in messages
    std::string text;
};

// The whole file, or of "-" standard input. Throws std::runtime_error when it cannot be read and usage_error when it
// is longer than 1 MiB.
text_file read_text_file(const std::string &path);

}  // namespace pmctl

#endif
