// SPDX-License-Identifier: Apache-2.0
// chassis_builder.h: puts a chassis together from the sections of its file.
#ifndef VIRTUAL_SWITCH_CHASSIS_CHASSIS_BUILDER_H
#define VIRTUAL_SWITCH_CHASSIS_CHASSIS_BUILDER_H

#include "chassis/model.h"
#include "chassis/section.h"

namespace virtual_switch {

// Every function takes one section, adds what it describes, and throws chassis_error for what cannot be. Sections
// come in the order of the functions: each may name interfaces of those before it.
class chassis_builder {
  public:
    // Names of files in the sections are relative to `folder`.
    explicit chassis_builder(std::string folder) : folder_(std::move(folder)) {}

    void set_chassis(const document_value &value);
    void add_module(const document_value &value);
    void add_interfaces(const document_value &value);
    void add_fcip(const document_value &value);
    void add_port_channel(const document_value &value);
    void add_sub_interfaces(const document_value &value);
    void override_ports(const document_value &value);
    void set_counters(const document_value &value);
    void add_transceivers(const document_value &value);

    [[nodiscard]] chassis_model finish();

  private:
    void add_port(const section &from, if_index_t if_index, port_kind kind, port_place place);
    void add_member(const section &from, if_index_t channel, if_index_t member);
    void add_default_transceivers();
    void check_sub_interface(const section &from, if_index_t if_index) const;
    [[nodiscard]] const port &named_port(const section &from, if_index_t if_index) const;
    [[nodiscard]] std::string why_missing(if_index_t if_index) const;
    [[nodiscard]] transceiver dumped_transceiver(const section &from) const;

    std::string folder_;
    chassis_model model_;
};

}  // namespace virtual_switch

#endif
