// SPDX-License-Identifier: Apache-2.0
// set_route.h: where a set request goes.
//
// An interface may have two owners: the Ethernet channel service for what is Ethernet about it, and a service of its
// own. The first is asked first; whether the second is asked, too, is judged again after that.
//
//     first interface                 first to 175                     then
//     type 5                          never                            to 179
//     type 26                         Ethernet attributes, unless the  to its owner, unless that was asked just now or
//     types 4 and 22 on a chassis     chassis is of type 4 or 5        the chassis is of type 10 or 11
//     of type 10 or 11
//     types 4 and 22 elsewhere        never                            where the attribute belongs, else to its owner
//     any other                       never                            to its owner
//
// Attributes 51 and 52 are only ever sent first, except for type 5. Before the second step a sub-interface of a port
// channel refuses what does not belong to 175, and its port mode. To send nothing is no failure.
#ifndef PM_CMI_COMMON_SET_ROUTE_H
#define PM_CMI_COMMON_SET_ROUTE_H

#include "platform/types.h"

namespace pm {

// What decides about the road.
struct set_subject {
    if_index_t first;        // the first interface
    uint8_t interface_type;  // its type
    uint8_t attribute;
};

// Whether the Ethernet channel service is asked first.
bool goes_to_ethernet_channel_first(const set_subject &subject);

// The service to ask then.
uint32_t destination_of(const set_subject &subject);

// Whether that service refuses the attribute, the interface being a sub-interface of a port channel.
bool is_refused_on_sub_interface(const set_subject &subject, uint32_t destination);

// Whether nothing is sent to it. `went_first`: the Ethernet channel service was asked.
bool ends_after_first(const set_subject &subject, bool went_first, uint32_t destination);

}  // namespace pm

#endif
