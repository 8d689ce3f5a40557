// SPDX-License-Identifier: Apache-2.0
// pm-virtual-switch: hosts the services of a switch's port manager for a chassis that a TOML file describes.
#include <fcntl.h>
#include <getopt.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>

#include "chassis/chassis_file.h"
#include "chassis/state_file.h"
#include "program_name.h"
#include "switch_daemon.h"

namespace {

using virtual_switch::program_name;

constexpr int exit_failure = 1;
constexpr int exit_usage = 2;

constexpr const char *help =
    "Usage: pm-virtual-switch [--check] [--state FILE] [--config-group GROUP] CHASSIS.toml\n"
    "Hosts the services of a switch's port manager for the chassis that the file describes.\n"
    "\n"
    "  --check               read the files, say whether they are good, and exit\n"
    "  --state FILE          keep in FILE what clients configure, and start with what it holds; without\n"
    "                        this option it ends with the program\n"
    "  --config-group GROUP  let members of GROUP, a name or a number, ask and configure, besides the\n"
    "                        program's own user and root; a private run-time directory is shared with it\n"
    "  --help                show this and exit\n"
    "  --version             show the version and exit\n"
    "\n"
    "SIGHUP reads the chassis file again; SIGTERM and SIGINT end the program. Clients meet it in the run-time "
    "directory:\n"
    "$MTS_RUNTIME_DIR, else $XDG_RUNTIME_DIR/port_mgr, else /tmp/port_mgr-UID.\n"
    "Clients of the system service set MTS_RUNTIME_DIR=/run/port_mgr.\n"
    "Exit status: 0, 1 after a failure, 2 for wrong usage.\n";

struct arguments {
    std::string chassis;
    std::string state;         // empty for none
    std::string config_group;  // empty for none
};

std::optional<virtual_switch::user_group> config_group(const arguments &given) {
    if (given.config_group.empty()) return std::nullopt;
    return virtual_switch::find_group(given.config_group);
}

int check(const arguments &given) {
    static_cast<void>(config_group(given));
    const auto model = virtual_switch::load_chassis(given.chassis);
    if (!given.state.empty()) virtual_switch::load_state(given.state);
    std::printf("%s: good: %s, %zu ports\n", given.chassis.c_str(), model.name.c_str(), model.ports.size());
    return 0;
}

int serve(const arguments &given) {
    virtual_switch::switch_daemon(given.chassis, given.state, config_group(given)).run();
    return 0;
}

// Opens those that were closed at the start: messages would reach whatever is opened in their place, such as a lock.
bool has_standard_descriptors() {
    int opened = 0;
    do opened = open("/dev/null", O_RDWR);
    while (opened >= 0 && opened <= STDERR_FILENO);
    return close(opened) == 0;
}

int run(int (*command)(const arguments &), const arguments &given) {
    try {
        return command(given);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s: %s\n", program_name, error.what());
        return exit_failure;
    }
}

int refuse_usage() {
    std::fprintf(stderr, "%s: usage: %s [--check] [--state FILE] [--config-group GROUP] CHASSIS.toml, or --help\n",
                 program_name, program_name);
    return exit_usage;
}

}  // namespace

int main(int argc, char **argv) {
    if (!has_standard_descriptors()) return exit_failure;
    constexpr std::array<option, 6> options{{{"check", no_argument, nullptr, 'c'},
                                             {"config-group", required_argument, nullptr, 'g'},
                                             {"state", required_argument, nullptr, 's'},
                                             {"help", no_argument, nullptr, 'h'},
                                             {"version", no_argument, nullptr, 'v'},
                                             {}}};
    auto *command = serve;
    arguments given;
    opterr = 0;
    for (int found = 0; (found = getopt_long(argc, argv, "", options.data(), nullptr)) != -1;) {
        switch (found) {
            case 'c':
                command = check;
                break;
            case 's':
                if (*optarg == '\0') return refuse_usage();
                given.state = optarg;
                break;
            case 'g':
                if (*optarg == '\0') return refuse_usage();
                given.config_group = optarg;
                break;
            case 'h':
                std::fputs(help, stdout);
                return 0;
            case 'v':
                std::printf("%s %s\n", program_name, PORT_MGR_VERSION);
                return 0;
            default:
                return refuse_usage();
        }
    }
    if (argc - optind != 1) return refuse_usage();
    given.chassis = argv[optind];
    return run(command, given);
}
