// SPDX-License-Identifier: Apache-2.0
#include "switch/status_words.h"

#include <fmt/core.h>

#include <system_error>

#include "port_mgr/status.h"

namespace pmctl {
namespace {

constexpr uint32_t no_memory = 1;
constexpr uint32_t last_error_number = 4095;  // the kernel's bound

struct named_status {
    uint32_t status;
    const char *name;
};

constexpr named_status named_statuses[] = {
    {PM_ERR_FAILURE, "PM_ERR_FAILURE"},   {PM_ERR_INVALID_PARAM, "PM_ERR_INVALID_PARAM"},
    {PM_ERR_TLV, "PM_ERR_TLV"},           {PM_ERR_NO_PAYLOAD, "PM_ERR_NO_PAYLOAD"},
    {PM_ERR_REJECTED, "PM_ERR_REJECTED"}, {PM_ERR_INVALID_RANGE, "PM_ERR_INVALID_RANGE"},
};

}  // namespace

std::string status_words(status_source source, uint32_t status) {
    for (const named_status &known : named_statuses)
        if (known.status == status) return fmt::format("{} ({:#x})", known.name, status);
    if (status == no_memory) return "out of memory";
    if (source == status_source::request && status <= last_error_number)
        return std::generic_category().message(static_cast<int>(status));
    return fmt::format("status {:#x}", status);
}

bool is_transport_error(uint32_t status) { return status != 0 && status <= last_error_number; }

}  // namespace pmctl
