// SPDX-License-Identifier: Apache-2.0
#include "support/virtual_chassis.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <string>

#include "chassis/chassis_file.h"
#include "platform_dev/tlv_builder.h"
#include "port_mgr/opcodes.h"
#include "services/channel_member_service.h"
#include "services/line_card_services.h"
#include "services/module_resource_service.h"

using namespace virtual_switch;

struct mts_reply {
    std::vector<uint8_t> payload;
    bool is_given = false;
};

void *mts_reply_payload(mts_reply_t *reply, uint32_t size) {
    if (size > MTS_MAX_PAYLOAD) return nullptr;
    reply->is_given = true;
    reply->payload.assign(size, 0);
    return reply->payload.data();
}

void mts_reply_fail(mts_reply_t *reply, uint32_t status) {
    FUZZ_REQUIRE(status != 0);
    reply->is_given = true;
}

namespace fuzz {
namespace {

constexpr uint8_t over_message = 0x80;

constexpr std::array<uint32_t, 14> opcodes{MTS_OPC_PM_GET_PORT_INFO,
                                           MTS_OPC_PM_GET_PORT_INFO_BRIEF,
                                           MTS_OPC_PM_GET_NEXT_PORT_INFO,
                                           MTS_OPC_PM_GET_IF_INDEX_LISTING,
                                           MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING,
                                           MTS_OPC_PM_GET_MODULE_RESOURCES,
                                           MTS_OPC_PM_GET_CLEAR_ETH_STATS,
                                           MTS_OPC_GET_SFP_DIAG_INFO,
                                           CMI_OPC_PM_SET_PORT_CONFIG,
                                           CMI_OPC_PM_GET_PORT_CONFIG,
                                           CMI_OPC_PM_GET_FCOT_INFO,
                                           CMI_OPC_PM_CONFIG_SUB_INTF,
                                           CMI_OPC_PM_CONFIG_LOOPBACK,
                                           CMI_OPC_PM_GET_MODULE_INTF_LISTING};

enum class context_kind : uint8_t { ports, state, line_card };

struct served {
    uint32_t sap;
    mts_service_t serve;
    context_kind context;
};

const std::vector<served> &services() {
    static const std::vector<served> all = [] {
        std::vector<served> made;
        for (const uint32_t sap : port_service_saps) made.push_back({sap, port_service, context_kind::ports});
        made.push_back({PM_SAP_CHANNEL_MEMBER, channel_member_service, context_kind::state});
        for (const auto &[sap, serve] : line_card_services()) made.push_back({sap, serve, context_kind::line_card});
        made.push_back({PM_SAP_MODULE_RESOURCE, supervisor_resource_service, context_kind::state});
        return made;
    }();
    return all;
}

// Read once: a chassis is made for every input.
const chassis_model &model_of(const example &chosen) {
    static std::map<std::string, chassis_model> loaded;
    const std::string file = std::string(SOURCE_FOLDER "/examples/chassis/") + chosen.file;
    const auto known = loaded.find(file);
    return known != loaded.end() ? known->second : loaded.emplace(file, load_chassis(file)).first->second;
}

// Who may configure the switch.
mts_client_t own_user() {
    static const uint32_t group = getegid();
    return {.uid = geteuid(), .group_count = 1, .groups = &group};
}

}  // namespace

request_code code_of(uint32_t sap, uint32_t opcode, bool is_cmi) {
    const auto service = std::ranges::find(services(), sap, &served::sap) - services().begin();
    const auto asked = std::ranges::find(opcodes, opcode) - opcodes.begin();
    return {static_cast<uint8_t>(service), static_cast<uint8_t>(asked | (is_cmi ? 0 : over_message))};
}

virtual_chassis::virtual_chassis(const example &chosen)
    : state_(model_of(chosen), {}, {[](const chassis_model &) {}, [](const configuration &) {}},
             [] { return switch_time(1000); }),
      card_{&state_, chosen.slot},
      ports_{&state_, {}} {}

std::vector<uint8_t> virtual_chassis::ask(request_code code, bytes payload) {
    const served &asked = services()[code.service % services().size()];
    const bool is_cmi = (code.opcode & over_message) == 0;
    const auto block = std::make_unique<uint8_t[]>(payload.size() + TLV_ZEROED_TAIL_SIZE);
    if (!payload.empty()) std::memcpy(block.get(), payload.data(), payload.size());
    const uint32_t card_node = state_.model().line_cards.at(card_.slot).node();
    const mts_request_t request{.node = asked.context == context_kind::line_card ? card_node : MTS_NODE_SUPERVISOR,
                                .sap = asked.sap,
                                .opcode = opcodes[(code.opcode & ~over_message) % opcodes.size()],
                                .is_cmi = is_cmi,
                                .kind = is_cmi ? 3u : 0u,
                                .payload_size = static_cast<uint32_t>(payload.size()),
                                .payload = payload.empty() ? nullptr : block.get(),
                                .client = own_user()};
    const std::array<void *, 3> contexts{&ports_, &state_, &card_};
    mts_reply reply;
    asked.serve(contexts[static_cast<size_t>(asked.context)], &request, &reply);
    FUZZ_REQUIRE(reply.is_given);
    return std::move(reply.payload);
}

}  // namespace fuzz
