// SPDX-License-Identifier: Apache-2.0
#include "switch_daemon.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "chassis/chassis_file.h"
#include "chassis/publication.h"
#include "messages.h"
#include "platform_dev/mts_dev.h"
#include "program_name.h"
#include "protocol/line_card_node.h"
#include "service_notifier.h"
#include "services/channel_member_service.h"
#include "services/guarded_service.h"
#include "services/line_card_services.h"
#include "services/module_resource_service.h"

namespace virtual_switch {
namespace {

[[noreturn]] void fail(const std::string &what) { throw std::runtime_error(what + ": " + std::strerror(errno)); }

std::string find_runtime_dir() {
    std::array<char, PATH_MAX> path{};
    if (mts_dev_runtime_dir(path.data(), path.size()) == 0) return path.data();
    fail("run-time directory " + std::string(path.data()));
}

std::unique_ptr<platform_dev::chassis_publisher> open_publisher(const std::string &runtime_dir) {
    auto publisher = platform_dev::chassis_publisher::open();
    if (publisher != nullptr) return publisher;
    if (errno != EWOULDBLOCK) fail("chassis database in " + runtime_dir);
    throw std::runtime_error("another instance serves in run-time directory " + runtime_dir);
}

// Only who holds the database's lock shares the directory, since another instance may serve there. Returns what to say
// of it.
std::string share(const std::string &runtime_dir, platform_dev::chassis_publisher &publisher,
                  const std::optional<user_group> &config_group) {
    if (!config_group) return "";
    uint32_t group = config_group->id;
    if (mts_dev_share_runtime_dir(&group) != 0 || !publisher.follow_sharing())
        fail("run-time directory " + runtime_dir + " cannot be shared with group " + config_group->name);
    return ", shared with group " + group_of(group).name + ", configured by group " + config_group->name;
}

void publish(platform_dev::chassis_publisher &publisher, const chassis_model &model) {
    if (publisher.publish(publication_of(model))) return;
    if (errno != ENOSPC) fail("chassis database");
    throw std::runtime_error("the chassis has more modules, ports or channels than the chassis database has room for");
}

std::function<void(const configuration &)> keeper_in(const std::string &state_file) {
    if (state_file.empty()) return [](const configuration &) {};
    return [state_file](const configuration &changes) { save_state(state_file, changes); };
}

}  // namespace

switch_daemon::switch_daemon(const std::string &chassis_file, const std::string &state_file,
                             const std::optional<user_group> &config_group)
    : switch_daemon(chassis_file, load_chassis(chassis_file),
                    state_file.empty() ? kept_state{} : take_state(state_file), config_group) {}

switch_daemon::switch_daemon(std::string chassis_file, chassis_model chassis, kept_state &&kept,
                             const std::optional<user_group> &config_group)
    : chassis_file_(std::move(chassis_file)),
      state_lock_(std::move(kept.lock)),
      runtime_dir_(find_runtime_dir()),
      publisher_(open_publisher(runtime_dir_)),
      sharing_(share(runtime_dir_, *publisher_, config_group)),
      state_(std::move(chassis), std::move(kept.changes),
             {[this](const chassis_model &model) { publish(*publisher_, model); }, keeper_in(kept.file)}),
      port_services_{&state_, config_access(config_group)},
      server_(mts_server_create()) {
    if (server_ == nullptr) fail("server");
    take_signals();
    add_services();
}

switch_daemon::~switch_daemon() {
    if (signal_fd_ >= 0) close(signal_fd_);
}

void switch_daemon::take_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGXFSZ, SIG_IGN);  // a state file that grows too large is a failed write
    std::signal(SIGPIPE, SIG_IGN);  // who reads the messages may go
    signal_fd_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (signal_fd_ < 0) fail("signalfd");
    const auto handler = [](void *daemon, int fd) { static_cast<switch_daemon *>(daemon)->handle_signal(fd); };
    if (mts_server_add_fd(server_.get(), signal_fd_, handler, this) != 0) fail("signalfd");
}

void switch_daemon::add_services() {
    for (const uint32_t sap : port_service_saps)
        add_service(MTS_NODE_SUPERVISOR, sap, guarded<port_service>, &port_services_);
    add_service(MTS_NODE_SUPERVISOR, PM_SAP_CHANNEL_MEMBER, guarded<channel_member_service>, &state_);
    add_service(MTS_NODE_SUPERVISOR, PM_SAP_MODULE_RESOURCE, guarded<supervisor_resource_service>, &state_);
    add_line_cards(state_.model());
}

void switch_daemon::add_service(uint32_t node, uint32_t sap, mts_service_t service, void *context) {
    if (mts_server_add_service(server_.get(), node, sap, service, context) == 0) return;
    fail("SAP " + std::to_string(sap) + " in " + runtime_dir_);
}

// A card is remembered before its services are there, so that those of one that failed half-way can be removed.
void switch_daemon::add_line_cards(const chassis_model &chassis) {
    for (const auto &[slot, card] : chassis.line_cards) {
        const auto [added, is_new] = line_cards_.try_emplace(slot, line_card_context{&state_, slot, state_.now()});
        if (!is_new) continue;
        for (const auto &[sap, serve] : line_card_services()) add_service(card.node(), sap, serve, &added->second);
    }
}

void switch_daemon::remove_absent_line_cards() {
    std::erase_if(line_cards_, [this](const auto &entry) {
        const uint8_t slot = entry.first;
        if (state_.model().line_cards.contains(slot)) return false;
        for (const auto &[sap, serve] : line_card_services()) {
            mts_server_remove_service(server_.get(), pm::line_card_node(slot), sap);
        }
        return true;
    });
}

// Another module in a slot has not served before.
void switch_daemon::restart_replaced_line_cards(const std::map<uint8_t, line_card> &before) {
    for (const auto &[slot, card] : state_.model().line_cards) {
        const auto old = before.find(slot);
        if (old != before.end() && old->second != card) line_cards_.at(slot).started = state_.now();
    }
}

void switch_daemon::run() {
    std::printf("%s: ready: %s, %zu ports, run-time directory %s%s\n", program_name, state_.model().name.c_str(),
                state_.model().ports.size(), runtime_dir_.c_str(), sharing_.c_str());
    std::fflush(stdout);
    notify_ready();
    if (mts_server_run(server_.get()) != 0) fail("server");
}

void switch_daemon::handle_signal(int fd) {
    signalfd_siginfo received{};
    if (read(fd, &received, sizeof received) != sizeof received) return;
    if (received.ssi_signo == SIGHUP) return reload();
    notify_stopping();
    mts_server_stop(server_.get());
}

void switch_daemon::reload() {
    notify_reloading();
    try {
        chassis_model chassis = load_chassis(chassis_file_);
        add_line_cards(chassis);
        const auto before = state_.model().line_cards;
        state_.reload(std::move(chassis));
        restart_replaced_line_cards(before);
    } catch (const std::exception &error) {
        say(std::string("not reloaded: ") + error.what());
    }
    remove_absent_line_cards();
    notify_ready();
}

}  // namespace virtual_switch
