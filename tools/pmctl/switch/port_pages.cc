// SPDX-License-Identifier: Apache-2.0
#include "switch/port_pages.h"

#include <deque>

#include "port_mgr/port_info_request.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/status.h"
#include "switch/record_array.h"

namespace pmctl {
namespace {

constexpr uint32_t answer_wait = 10;  // seconds, as long as the library waits in a query of its own
constexpr int32_t transport_failure = -1;

mts_recv_options_t answer_to(const mts_msg_t &request) {
    mts_recv_options_t options{};
    options.word[0] = 1;
    options.word[2] = answer_wait;
    options.word[3] = mts_rr_token_get(&request);
    return options;
}

// Requests under way, the oldest first. Those whose answers nobody waits for any more, since another one failed, are
// released with their owner; the answers are the handle's, which releases them when it is closed.
class paged_query {
  public:
    // Ports are added to `ports`.
    paged_query(const switch_connection &connection, const std::string &subject, std::vector<pm_port_info_t> &ports)
        : connection_(connection), subject_(subject), ports_(ports) {}

    [[nodiscard]] size_t under_way() const { return requests_.size(); }

    // A request that cannot be sent is sent again after each answer: that makes room in a queue that is full, and tells
    // first what went wrong with an earlier one.
    void ask(const pm_if_index_range_t &page) {
        uint32_t status = send(page);
        while (status != 0 && under_way() > 0) {
            receive();
            status = send(page);
        }
        connection_.check_request(subject_, status);
    }

    // Takes the answer to the oldest request.
    void receive() {
        const mts_recv_options_t options = answer_to(*requests_.front().get());
        mts_msg_t response{};
        if (mts_recv(connection_.handle(), &response, &options) == transport_failure)
            connection_.check_request(subject_, mts_errno_get(connection_.handle()));
        const owned_message answer(connection_.handle(), response);
        requests_.pop_front();
        add_ports(answer);
    }

  private:
    // Returns 0, or why it was not sent.
    uint32_t send(const pm_if_index_range_t &page) {
        mts_msg_t request{};
        const uint32_t status = pm_send_get_port_info_range(connection_.handle(), page.first, page.last, &request);
        if (status == 0) requests_.emplace_back(connection_.handle(), request);
        return status;
    }

    void add_ports(const owned_message &answer) {
        uint32_t count = 0;
        pm_port_info_t *records = nullptr;
        const uint32_t status = pm_parse_get_port_info(answer.get(), &count, &records);
        if (status == PM_ERR_INVALID_RANGE) return;
        switch_connection::check_answer(subject_, status);
        const record_array<pm_port_info_t> found{std::unique_ptr<pm_port_info_t[], free_block>(records), count};
        ports_.insert(ports_.end(), found.all().begin(), found.all().end());
    }

    const switch_connection &connection_;
    const std::string &subject_;
    std::vector<pm_port_info_t> &ports_;
    std::deque<owned_message> requests_;
};

}  // namespace

void add_ports_of_pages(const switch_connection &connection, const std::string &subject,
                        std::span<const pm_if_index_range_t> pages, size_t pages_under_way,
                        std::vector<pm_port_info_t> &ports) {
    paged_query query(connection, subject, ports);
    for (const pm_if_index_range_t &page : pages) {
        if (query.under_way() == pages_under_way) query.receive();
        query.ask(page);
    }
    while (query.under_way() > 0) query.receive();
}

}  // namespace pmctl
