// SPDX-License-Identifier: Apache-2.0
#include "switch/switch_client.h"

#include <cerrno>
#include <climits>

#include <fmt/core.h>

#include <system_error>

#include "failure.h"
#include "platform_dev/if_index_dev.h"
#include "platform_dev/mts_dev.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/status.h"
#include "switch/status_words.h"

namespace pmctl {
namespace {

constexpr const char *every_interface = "all interfaces";
constexpr uint32_t page_members = 16;
constexpr uint16_t last_sub_number = 4095;

// The run-time directory for messages.
std::string runtime_directory() {
    char path[PATH_MAX] = "";
    mts_dev_runtime_dir(path, sizeof path);
    return *path != '\0' ? path : "the run-time directory";
}

std::string reason_not_to_open(int error) {
    if (error == EPERM) return "it must be a directory of your own with mode 0700";
    return std::generic_category().message(error);
}

mts_handle_t open_or_throw() {
    const mts_handle_t handle = mts_dev_open();
    const int error = errno;
    if (handle == 0)
        throw switch_unavailable(
            fmt::format("cannot open the message transport in {}: {}", runtime_directory(), reason_not_to_open(error)));
    return handle;
}

std::string not_running() {
    return fmt::format("no switch is running in {}: start one with: pm-virtual-switch examples/chassis/director.toml",
                       runtime_directory());
}

// A message that came from the switch, released with its owner.
class received_message {
  public:
    received_message(mts_handle_t handle, const mts_msg_t &message) : handle_(handle), message_(message) {}
    ~received_message() { mts_drop(handle_, &message_); }
    received_message(const received_message &) = delete;
    received_message &operator=(const received_message &) = delete;

    [[nodiscard]] const mts_msg_t *get() const { return &message_; }

  private:
    mts_handle_t handle_;
    mts_msg_t message_;
};

void check_answer(const std::string &subject, uint32_t status) {
    if (status == 0) return;
    throw query_refused(fmt::format("{}: {}", subject, status_words(status_source::answer, status)));
}

// A page of a range of which nothing exists is empty.
uint32_t parse_page(const mts_msg_t *message, uint32_t *count, pm_port_info_t **ports) {
    const uint32_t status = pm_parse_get_port_info(message, count, ports);
    return status == PM_ERR_INVALID_RANGE ? 0 : status;
}

// The end of a page of a range. A member's sub-interfaces follow it, and none may fall between two pages.
if_index_t end_of_page(const interface_range &range, uint32_t begin) {
    if (range.count() - begin <= page_members) return range.last();
    const if_index_t member = range.member(begin + page_members - 1);
    if_index_t last_sub_interface;
    return if_index_sub_intf_init(&last_sub_interface, member, last_sub_number) == 0 ? last_sub_interface : member;
}

}  // namespace

open_handle::open_handle() : handle_(open_or_throw()) {}

open_handle::~open_handle() { mts_dev_close(handle_); }

record_array<pm_port_info_brief_t> switch_client::brief_ports() {
    const auto request = [](mts_handle_t handle, mts_msg_t *response) {
        return pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, response);
    };
    return query<pm_port_info_brief_t>(every_interface, request, pm_parse_get_port_info_brief);
}

record_array<pm_port_info_t> switch_client::ports() {
    const auto request = [](mts_handle_t handle, mts_msg_t *response) {
        return pm_get_port_info(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, response);
    };
    return query<pm_port_info_t>(every_interface, request, pm_parse_get_port_info);
}

std::vector<pm_port_info_t> switch_client::ports(const interface_range &range) {
    std::vector<pm_port_info_t> ports;
    for (uint32_t begin = 0; begin < range.count(); begin += page_members) {
        const auto request = [&range, begin](mts_handle_t handle, mts_msg_t *response) {
            return pm_get_port_info_range(handle, range.member(begin), end_of_page(range, begin), response);
        };
        const auto page = query<pm_port_info_t>(range.text(), request, parse_page);
        ports.insert(ports.end(), page.all().begin(), page.all().end());
    }
    if (ports.empty()) throw query_refused(fmt::format("no such interface: {}", range.text()));
    return ports;
}

template <typename Record>
record_array<Record> switch_client::query(const std::string &subject, const request_function &request,
                                          parse_function<Record> parse) {
    mts_msg_t response{};
    check_request(subject, request(handle_.get(), &response));
    const received_message message(handle_.get(), response);
    uint32_t count = 0;
    Record *records = nullptr;
    check_answer(subject, parse(message.get(), &count, &records));
    return {std::unique_ptr<Record[], free_block>(records), count};
}

// A service that is missing beside a port manager that answers concerns this question only.
void switch_client::check_request(const std::string &subject, uint32_t status) {
    if (status == 0) return;
    if (status != EHOSTUNREACH)
        throw switch_unavailable(fmt::format("{}: {}", subject, status_words(status_source::request, status)));
    if (!port_manager_answers()) throw switch_unavailable(not_running());
    throw query_refused(fmt::format("{}: its service does not run on this switch", subject));
}

bool switch_client::port_manager_answers() {
    constexpr if_index_t before_the_first = 0;
    mts_msg_t response{};
    if (pm_get_next_port_info(handle_.get(), before_the_first, &response) != 0) return false;
    const received_message message(handle_.get(), response);
    return true;
}

}  // namespace pmctl
