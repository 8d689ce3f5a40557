// SPDX-License-Identifier: Apache-2.0
#include "property.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "naive_bytes.h"

namespace model {
namespace {

constexpr uint32_t default_seed = 20;
constexpr uint32_t default_cases = 400;

uint32_t setting(const char *name, uint32_t otherwise) {
    const char *const text = std::getenv(name);
    return text == nullptr ? otherwise : static_cast<uint32_t>(std::strtoul(text, nullptr, 0));
}

}  // namespace

property::property() { interfaces.wire_mask = wire_mask; }

void property::for_random_cases(const std::function<void(random_source &)> &body, uint32_t share) {
    const uint32_t first = setting("PORT_MGR_SEED", default_seed);
    const uint32_t cases = std::max(setting("PORT_MGR_CASES", default_cases) / share, 1U);
    std::fprintf(stderr, "PORT_MGR_SEED=%u, %u cases\n", first, cases);
    for (uint32_t seed = first; seed - first < cases; ++seed) {
        random_source source(seed);
        body(source);
        if (!HasFailure()) continue;
        ADD_FAILURE() << "replay with PORT_MGR_SEED=" << seed << " PORT_MGR_CASES=1";
        return;
    }
}

std::vector<std::string> property::take_reporters() {
    std::vector<std::string> reporters = assertions.take();
    // The library stops reporting when its log is full.
    if (!reporters.empty()) assertions.resize(0);
    for (std::string &reporter : reporters) reporter.erase(0, reporter.find(": ") + 2);
    return reporters;
}

std::vector<std::string> property::take_calls(const std::string &beginning) {
    std::vector<std::string> calls = support::call_log::take();
    std::erase_if(calls, [&](const std::string &call) { return !call.starts_with(beginning); });
    return calls;
}

}  // namespace model
