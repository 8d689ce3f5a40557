// SPDX-License-Identifier: Apache-2.0
#include "output/member_list.h"

#include <gmock/gmock.h>

#include <cstring>

#include "fixed_records.h"
#include "output/port_members.h"
#include "output/render.h"

namespace {

using testing::HasSubstr;

std::string list_of(const std::vector<pm_port_info_t> &ports) {
    return pmctl::render({pmctl::member_sheets(pmctl::port_groups(), pmctl::records_of(std::span(ports))), {}}, {});
}

TEST(member_list, shows_each_member_in_words_beside_its_label) {
    EXPECT_EQ(list_of({worded_port()}), R"(fc1/4
  General
    Interface                     fc1/4
    Description                   uplink to core
    Owner                         zone server
    Port type                     internal
    Physical layer                FC virtual
    Port channel                  port-channel12
    Transceiver present           yes
  State
    Admin state                   up
    State                         trunking
    State reason                  Link failure: loss of signal
    Service state                 out of service
    Lane state                    up, down, testing, all
  Mode
    Admin mode                    E
    Oper mode                     TE
    Admin trunk mode              auto
    Oper trunk mode               on
    Port VSAN                     2003
    Native VLAN                   2004
    Encapsulation                 eisl
    Promiscuous                   on
  Link
    Admin speed                   auto max 4 Gbps
    Oper speed                    100 Mbps
    Rate mode                     shared
    Duplex                        Half
    Auto-negotiation              off
    Bandwidth (kbit/s)            4201009000
    MTU (bytes)                   201010
    Receive flow control          on
    Send flow control             desired
    Beacon mode                   on
  Addresses
    FC address                    0x0A0BCD
    IP address                    192.0.2.1
    IP mask                       255.255.255.0
  Buffers and credits
    BB credits                    default, 5 (mode E), 16 (mode Fx), 7, 8
    Extended BB credits           default
    BB credit multiplier          default
    Performance buffers           145
    BB state change notification  off
    Receive buffer size (bytes)   2013
  Traps, tracking and errors
    Link-up trap                  on
    Link-down trap                off
    Delayed trap state            FX
    Down on link failure          enabled
    Ignored errors                bit error on
    Tracking mode                 force_shut
    Link failures                 501
    Sync losses                   502
    Signal losses                 503
    Invalid words                 504
    Bad CRCs                      505
  FCIP
    Peer address                  198.51.100.7
    Peer TCP port                 3225
    Attribute 86                  601
    Attribute 87                  602
    Attribute 88                  605
    Attribute 89                  604
    Attribute 90                  603
    Attribute 91                  606
  Other attributes
    Attribute 67                  122
    Attribute 68                  123
    Attribute 78                  124
    Attribute 81                  701
    Attribute 82                  702
    Attribute 93                  703
    Attribute 94                  704
    Attribute 95                  705
    Attribute 106                 706
    Attribute 107                 707
    Attribute 108                 708
)");
}

TEST(member_list, shows_a_dash_for_what_a_port_does_not_have) {
    EXPECT_EQ(list_of({bare_port()}), R"(mgmt0
  General
    Interface                     mgmt0
    Description                   -
    Owner                         -
    Port type                     -
    Physical layer                Unknown
    Port channel                  -
    Transceiver present           no
  State
    Admin state                   unknown
    State                         unknown
    State reason                  Unknown
    Service state                 in service
    Lane state                    unknown, unknown, unknown, unknown
  Mode
    Admin mode                    -
    Oper mode                     -
    Admin trunk mode              -
    Oper trunk mode               -
    Port VSAN                     -
    Native VLAN                   -
    Encapsulation                 unknown
    Promiscuous                   -
  Link
    Admin speed                   auto
    Oper speed                    unknown
    Rate mode                     -
    Duplex                        unknown
    Auto-negotiation              -
    Bandwidth (kbit/s)            0
    MTU (bytes)                   0
    Receive flow control          off
    Send flow control             off
    Beacon mode                   -
  Addresses
    FC address                    -
    IP address                    -
    IP mask                       -
  Buffers and credits
    BB credits                    default, default, default, default, default
    Extended BB credits           default
    BB credit multiplier          0
    Performance buffers           default
    BB state change notification  -
    Receive buffer size (bytes)   0
  Traps, tracking and errors
    Link-up trap                  -
    Link-down trap                -
    Delayed trap state            unknown
    Down on link failure          -
    Ignored errors                -
    Tracking mode                 operationally-bound
    Link failures                 0
    Sync losses                   0
    Signal losses                 0
    Invalid words                 0
    Bad CRCs                      0
  FCIP
    Peer address                  -
    Peer TCP port                 -
    Attribute 86                  0
    Attribute 87                  0
    Attribute 88                  0
    Attribute 89                  0
    Attribute 90                  0
    Attribute 91                  0
  Other attributes
    Attribute 67                  0
    Attribute 68                  0
    Attribute 78                  0
    Attribute 81                  0
    Attribute 82                  0
    Attribute 93                  0
    Attribute 94                  0
    Attribute 95                  0
    Attribute 106                 0
    Attribute 107                 0
    Attribute 108                 0
)");
}

TEST(member_list, shows_the_number_of_an_unknown_value) {
    EXPECT_THAT(list_of({full_port()}), HasSubstr("    Admin mode                    Unknown(201001)\n"
                                                  "    Oper mode                     Unknown(201002)\n"));
}

TEST(member_list, shows_a_dash_for_empty_words) {
    pm_port_info_t port = full_port();
    port.track_mode = 2;
    EXPECT_THAT(list_of({port}), HasSubstr("    Tracking mode                 -\n"));
}

TEST(member_list, parts_interfaces_by_a_blank_line) {
    EXPECT_EQ(list_of({full_port(), bare_port()}), list_of({full_port()}) + "\n" + list_of({bare_port()}));
}

TEST(member_list, is_safe_against_wild_texts) {
    pm_port_info_t port = full_port();
    strcpy(port.description, "two\nlines \xff\x1b[2J");
    EXPECT_THAT(list_of({port}), HasSubstr("two?lines \xef\xbf\xbd?[2J\n"));
    memset(port.owner, 'x', sizeof port.owner);
    EXPECT_THAT(list_of({port}), HasSubstr("  " + std::string(sizeof port.owner, 'x') + "\n"));
}

}  // namespace
