// SPDX-License-Identifier: Apache-2.0
// service_notifier.h: tells a service manager how the daemon is, by the protocol of $NOTIFY_SOCKET.
#ifndef VIRTUAL_SWITCH_SERVICE_NOTIFIER_H
#define VIRTUAL_SWITCH_SERVICE_NOTIFIER_H

namespace virtual_switch {

// Does nothing when no manager listens; failures are nobody's concern.
void notify_ready();
void notify_reloading();
void notify_stopping();

}  // namespace virtual_switch

#endif
