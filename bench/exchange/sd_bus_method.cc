// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/sd_bus_method.h"

#include <cerrno>

namespace bench {

namespace {

constexpr const char *object_path = "/bench";
constexpr const char *interface_name = "bench.Ports";
constexpr const char *method_name = "Get";

int answer_call(sd_bus_message *request, void *answer, sd_bus_error *) {
    const void *bytes = nullptr;
    size_t size = 0;
    if (const int error = sd_bus_message_read_array(request, 'y', &bytes, &size); error < 0) return error;
    sd_bus_message *reply = nullptr;
    if (const int error = sd_bus_message_new_method_return(request, &reply); error < 0) return error;
    const auto &payload = *static_cast<const std::vector<char> *>(answer);
    sd_bus_message_append_array(reply, 'y', payload.data(), payload.size());
    const int sent = sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
    return sent;
}

const sd_bus_vtable methods[] = {SD_BUS_VTABLE_START(0),
                                 SD_BUS_METHOD(method_name, "ay", "ay", answer_call, SD_BUS_VTABLE_UNPRIVILEGED),
                                 SD_BUS_VTABLE_END};

void call(sd_bus *bus, const char *service_name, const std::vector<char> &request, size_t answer_size) {
    sd_bus_message *message = nullptr;
    sd_bus_message *reply = nullptr;
    require_bus(sd_bus_message_new_method_call(bus, &message, service_name, object_path, interface_name, method_name),
                "sd_bus_message_new_method_call");
    sd_bus_message_append_array(message, 'y', request.data(), request.size());
    require_bus(sd_bus_call(bus, message, 0, nullptr, &reply), "sd_bus_call");
    const void *bytes = nullptr;
    size_t size = 0;
    require_bus(sd_bus_message_read_array(reply, 'y', &bytes, &size), "sd_bus_message_read_array");
    require(size == answer_size, "an answer of sd-bus");
    sd_bus_message_unref(message);
    sd_bus_message_unref(reply);
}

}  // namespace

bus_owner new_bus() {
    sd_bus *bus = nullptr;
    require_bus(sd_bus_new(&bus), "sd_bus_new");
    return bus_owner(bus);
}

bus_owner connect_bus(const std::string &path, bool is_message_bus) {
    bus_owner bus = new_bus();
    require_bus(sd_bus_set_address(bus.get(), ("unix:path=" + path).c_str()), "sd_bus_set_address");
    require_bus(sd_bus_set_bus_client(bus.get(), is_message_bus), "sd_bus_set_bus_client");
    require_bus(sd_bus_start(bus.get()), "sd_bus_start");
    return bus;
}

void add_method(sd_bus *bus, const std::vector<char> *answer) {
    void *const context = const_cast<std::vector<char> *>(answer);
    require_bus(sd_bus_add_object_vtable(bus, nullptr, object_path, interface_name, methods, context),
                "sd_bus_add_object_vtable");
}

bool process_all(sd_bus *bus) {
    int done = 1;
    while (done > 0) done = sd_bus_process(bus, nullptr);
    return done == 0;
}

exchange calling(bus_owner bus, const char *service_name, payload_sizes sizes) {
    return [bus = std::shared_ptr<sd_bus>(std::move(bus)), service_name, request = std::vector<char>(sizes.request),
            answer_size = sizes.answer] { call(bus.get(), service_name, request, answer_size); };
}

}  // namespace bench
