// SPDX-License-Identifier: Apache-2.0
// line_card_thread.h: the line cards of a chassis, served in a thread of the test, with the time that the test says.
#ifndef TESTS_INTEGRATION_VIRTUAL_SWITCH_LINE_CARD_THREAD_H
#define TESTS_INTEGRATION_VIRTUAL_SWITCH_LINE_CARD_THREAD_H

#include <atomic>
#include <list>
#include <memory>
#include <string>
#include <thread>

#include "platform_dev/chassis_db.h"
#include "platform_dev/mts_service.h"
#include "services/line_card.h"

class line_card_thread {
  public:
    // Publishes the chassis of a chassis file's text in the run-time directory, and serves.
    explicit line_card_thread(const std::string &chassis);
    ~line_card_thread();
    line_card_thread(const line_card_thread &) = delete;
    line_card_thread &operator=(const line_card_thread &) = delete;

    void pass(virtual_switch::switch_time time) { now_ = now_.load() + time; }

  private:
    std::atomic<virtual_switch::switch_time> now_{virtual_switch::switch_time(0)};
    std::unique_ptr<platform_dev::chassis_publisher> publisher_;
    virtual_switch::switch_state state_;
    std::list<virtual_switch::line_card_context> cards_;
    mts_server_t *server_;
    std::thread thread_;
};

#endif
