// SPDX-License-Identifier: Apache-2.0
// Files of pmctl's command lines, and texts in them.
#include <string_view>

#include "failure.h"
#include "output/command_lines.h"
#include "output/printable_text.h"
#include "settings/config_file.h"
#include "settings/line_words.h"
#include "support/fuzz.h"

namespace {

// The line that a setting is written as is read to the same setting.
void check_setting(const pmctl::setting_change &change) {
    const std::string line = pmctl::setting_line(change);
    FUZZ_REQUIRE(!line.empty());
    const auto steps = pmctl::read_config("again", "interface fc1/1\n" + line + "\n");
    FUZZ_REQUIRE(steps.size() == 1);
    FUZZ_REQUIRE(pmctl::is_same_value(std::get<pmctl::setting_step>(steps[0].what).change, change));
}

void check_steps(std::string_view text) {
    try {
        for (const pmctl::config_step &step : pmctl::read_config("input", text)) {
            FUZZ_REQUIRE(step.line >= 1);
            if (const auto *setting = std::get_if<pmctl::setting_step>(&step.what)) check_setting(setting->change);
        }
    } catch (const pmctl::usage_errors &errors) {
        FUZZ_REQUIRE(!errors.lines().empty() && errors.lines().size() <= 101);
        for (const std::string &line : errors.lines()) FUZZ_REQUIRE(line.starts_with("input:"));
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    check_steps(text);
    FUZZ_REQUIRE(pmctl::line_words(pmctl::quoted_text(text)) == std::vector<std::string>{text});
    const std::string printable = pmctl::printable_text(text);
    FUZZ_REQUIRE(pmctl::printable_length(printable) == printable.size());
    return 0;
}
