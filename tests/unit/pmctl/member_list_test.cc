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

TEST(member_list, shows_each_member_beside_its_label) {
    EXPECT_EQ(list_of({full_port()}), R"(fc1/4
  General
    Interface                     fc1/4
    Description                   uplink to core
    Owner                         zone server
    Port type                     101
    Physical layer                102
    Port channel                  port-channel12
    Transceiver present           103
  State
    Admin state                   104
    State                         105
    State reason                  106
    Service state                 107
    Lane state                    108 109 110 111
  Mode
    Admin mode                    201001
    Oper mode                     201002
    Admin trunk mode              112
    Oper trunk mode               113
    Port VSAN                     2003
    Native VLAN                   2004
    Encapsulation                 114
    Promiscuous                   201005
  Link
    Admin speed (Mbit/s)          201006
    Oper speed (Mbit/s)           201007
    Rate mode                     115
    Duplex                        116
    Auto-negotiation              201008
    Bandwidth (kbit/s)            4201009000
    MTU (bytes)                   201010
    Receive flow control          2011
    Send flow control             2012
    Beacon mode                   117
  Addresses
    FC address                    0x0A0BCD
    IP address                    192.0.2.1
    IP mask                       255.255.255.0
  Buffers and credits
    BB credits                    301 302 303 304 305
    Extended BB credits           306
    BB credit multiplier          307
    Performance buffers           308
    BB state change notification  118
    Receive buffer size (bytes)   2013
  Traps, tracking and errors
    Link-up trap                  119
    Link-down trap                120
    Delayed trap state            401
    Down on link failure          402
    Ignored errors                121
    Tracking mode                 403
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
    Port type                     0
    Physical layer                0
    Port channel                  -
    Transceiver present           0
  State
    Admin state                   0
    State                         0
    State reason                  0
    Service state                 0
    Lane state                    0 0 0 0
  Mode
    Admin mode                    0
    Oper mode                     0
    Admin trunk mode              0
    Oper trunk mode               0
    Port VSAN                     -
    Native VLAN                   -
    Encapsulation                 0
    Promiscuous                   0
  Link
    Admin speed (Mbit/s)          0
    Oper speed (Mbit/s)           -
    Rate mode                     0
    Duplex                        0
    Auto-negotiation              0
    Bandwidth (kbit/s)            0
    MTU (bytes)                   0
    Receive flow control          0
    Send flow control             0
    Beacon mode                   0
  Addresses
    FC address                    -
    IP address                    -
    IP mask                       -
  Buffers and credits
    BB credits                    0 0 0 0 0
    Extended BB credits           0
    BB credit multiplier          0
    Performance buffers           0
    BB state change notification  0
    Receive buffer size (bytes)   0
  Traps, tracking and errors
    Link-up trap                  0
    Link-down trap                0
    Delayed trap state            0
    Down on link failure          0
    Ignored errors                0
    Tracking mode                 0
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
