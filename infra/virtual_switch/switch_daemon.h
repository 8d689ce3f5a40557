// SPDX-License-Identifier: Apache-2.0
// switch_daemon.h: the running virtual switch: one chassis, its services and its database in a run-time directory.
#ifndef VIRTUAL_SWITCH_SWITCH_DAEMON_H
#define VIRTUAL_SWITCH_SWITCH_DAEMON_H

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "chassis/state_file.h"
#include "chassis/switch_state.h"
#include "platform_dev/chassis_db.h"
#include "platform_dev/mts_service.h"
#include "services/line_card.h"
#include "services/port_service.h"

namespace virtual_switch {

// Everything happens in one loop, so a reload falls between two requests.
class switch_daemon {
  public:
    // Loads the chassis file, and what clients configured from the state file, publishes the database and takes the
    // SAPs of the run-time directory. Without the name of a state file, what clients configure ends with the program.
    // With a group, its members may configure, too, and a run-time directory that is private is shared with them.
    // Blocks the signals that the loop takes. Throws std::runtime_error with one line.
    switch_daemon(const std::string &chassis_file, const std::string &state_file,
                  const std::optional<user_group> &config_group);
    ~switch_daemon();
    switch_daemon(const switch_daemon &) = delete;
    switch_daemon &operator=(const switch_daemon &) = delete;

    // Says on standard output that it is ready, and serves until SIGTERM or SIGINT; SIGHUP reloads the file. Throws
    // std::runtime_error.
    void run();

  private:
    // Takes what was read from files, so that a bad one disturbs nothing.
    switch_daemon(std::string chassis_file, chassis_model chassis, kept_state &&kept,
                  const std::optional<user_group> &config_group);

    void take_signals();
    void add_services();
    void add_line_cards(const chassis_model &chassis);
    void remove_absent_line_cards();
    void restart_replaced_line_cards(const std::map<uint8_t, line_card> &before);
    void add_service(uint32_t node, uint32_t sap, mts_service_t service, void *context);
    void handle_signal(int fd);
    void reload();

    struct server_deleter {
        void operator()(mts_server_t *server) const { mts_server_destroy(server); }
    };

    std::string chassis_file_;
    platform_dev::unique_fd state_lock_;  // none without a state file
    std::string runtime_dir_;
    std::unique_ptr<platform_dev::chassis_publisher> publisher_;
    std::string sharing_;  // with whom, for the line that says that it is ready
    switch_state state_;
    port_service_context port_services_;
    std::map<uint8_t, line_card_context> line_cards_;  // those whose services are there, by slot
    std::unique_ptr<mts_server_t, server_deleter> server_;
    int signal_fd_ = -1;
};

}  // namespace virtual_switch

#endif
