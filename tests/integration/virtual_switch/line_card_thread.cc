// SPDX-License-Identifier: Apache-2.0
#include "line_card_thread.h"

#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "chassis/publication.h"
#include "port_mgr/opcodes.h"
#include "services/ethernet_stats_service.h"
#include "services/module_resource_service.h"

using namespace virtual_switch;

line_card_thread::line_card_thread(const std::string &chassis)
    : publisher_(platform_dev::chassis_publisher::open()),
      state_(parse_chassis(chassis), {},
             {[this](const chassis_model &model) { EXPECT_TRUE(publisher_->publish(publication_of(model))); },
              [](const configuration &) {}},
             [this] { return now_.load(); }),
      server_(mts_server_create()) {
    for (const auto &[slot, card] : state_.model().line_cards) {
        line_card_context &context = cards_.emplace_back(line_card_context{&state_, slot});
        const auto add = [&](uint32_t sap, mts_service_t service) {
            EXPECT_EQ(mts_server_add_service(server_, card.node(), sap, service, &context), 0);
        };
        add(PM_SAP_ETHERNET_STATS, ethernet_stats_service);
        add(PM_SAP_MODULE_RESOURCE, line_card_resource_service);
    }
    thread_ = std::thread([this] { mts_server_run(server_); });
}

line_card_thread::~line_card_thread() {
    mts_server_stop(server_);
    thread_.join();
    mts_server_destroy(server_);
}
