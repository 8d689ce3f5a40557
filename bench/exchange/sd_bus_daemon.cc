// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <unistd.h>

#include <fstream>

#include "bench/exchange/peers.h"
#include "bench/exchange/sd_bus_method.h"

namespace bench {

namespace {

constexpr const char *service_name = "bench.Ports";

void write_configuration(const std::string &file, const std::string &socket) {
    std::ofstream out(file);
    out << R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=)"
        << socket << R"(</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
}

void run_daemon(const std::string &file, const readiness &ready) {
    fcntl(ready.announcing_end(), F_SETFD, 0);
    const std::string configuration = "--config-file=" + file;
    const std::string print_address = "--print-address=" + std::to_string(ready.announcing_end());
    execlp("dbus-daemon", "dbus-daemon", configuration.c_str(), "--nofork", "--nopidfile", "--syslog-only",
           print_address.c_str(), nullptr);
    require(false, "dbus-daemon");
}

}  // namespace

rival sd_bus_daemon(const std::string &directory, payload_sizes sizes) {
    const std::string socket = directory + "/dbus";
    const auto serve = [=](const readiness &ready) {
        write_configuration(socket + ".conf", socket);
        const server_process daemon([&](const readiness &started) { run_daemon(socket + ".conf", started); });
        const std::vector<char> answer(sizes.answer);
        const bus_owner bus = connect_bus(socket, true);
        add_method(bus.get(), &answer);
        require_bus(sd_bus_request_name(bus.get(), service_name, 0), "sd_bus_request_name");
        ready.announce();
        while (process_all(bus.get())) sd_bus_wait(bus.get(), UINT64_MAX);
    };
    return {"sd-bus through dbus-daemon", [=] { return calling(connect_bus(socket, true), service_name, sizes); },
            serve};
}

}  // namespace bench
