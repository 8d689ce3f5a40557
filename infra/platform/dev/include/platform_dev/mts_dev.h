/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_dev The development platform
 * @brief What only an ordinary host has beside the platform's own headers.
 */
/**
 * @defgroup platform_dev_mts mts_dev.h: handles and the run-time directory
 * @ingroup platform_dev
 * @brief What only an ordinary host needs of the transport: handles of one's own and the run-time directory.
 *
 * On the switch a process inherits its queue; here it opens one. A handle belongs to one thread at a time; apart from
 * that, all functions are thread-safe.
 * @{
 */
#ifndef PLATFORM_DEV_MTS_DEV_H
#define PLATFORM_DEV_MTS_DEV_H

#include <stddef.h>

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** The address of the supervisor, where the port manager and its neighbours run. */
#define MTS_NODE_SUPERVISOR 0xfe000000u

/** The largest payload of one message, in bytes. */
#define MTS_MAX_PAYLOAD (16u * 1024u * 1024u)

/**
 * Opens a handle of the calling process.
 *
 * @return The handle, the caller's to close with mts_dev_close(), or 0 on failure, with the reason in errno.
 */
mts_handle_t mts_dev_open(void);

/**
 * Closes a handle and releases every message that was kept for it.
 *
 * Messages that were received stay valid until they are dropped.
 *
 * @param[in] handle  The handle.
 * @return 0, or -1 with errno EBADF.
 */
int32_t mts_dev_close(mts_handle_t handle);

/**
 * Tells a descriptor for poll, select and epoll.
 *
 * It is readable while mts_recv() has something for this handle without waiting, an answer or the end of a service. It
 * is opened by the first call, stays the handle's, and ends with it: neither read nor close it.
 *
 * @param[in] handle  The handle.
 * @return The descriptor, or -1 on failure, with the reason in errno.
 */
int mts_dev_descriptor(mts_handle_t handle);

/**
 * Tells the run-time directory and creates it with mode 0700 when it is missing.
 *
 * It is `$MTS_RUNTIME_DIR`, else `$XDG_RUNTIME_DIR/port_mgr`, else `/tmp/port_mgr-UID`; a variable that is empty counts
 * as unset. The directory is private (0700), or shared with its group (0710 or 0750, with or without the set-group-id
 * bit): then members of the group are clients, too. Services run as its owner, who is a member of the group or has set
 * that bit. A directory of another user's is taken only from `MTS_RUNTIME_DIR`: who names it there trusts its owner.
 *
 * @param[out] path  The path, NUL-terminated.
 * @param[in]  size  The bytes that `path` has room for.
 * @return 0, or -1 with errno: EPERM when the directory is another user's and taken by default, when somebody but its
 *     owner can write there or when others than its group can enter; ENAMETOOLONG, with nothing written, when no
 *     socket's address or not `path` can hold it; else what the system says.
 */
int32_t mts_dev_runtime_dir(char *path, size_t size);

/**
 * Shares the run-time directory with a group, for those who serve there, before they do.
 *
 * The group's members can ask the services from then on. A directory that its owner has shared already stays as it is.
 *
 * @param[in,out] group  The group to share with; then the group that the directory is shared with.
 * @return 0, or -1 with errno: EPERM also when the directory is another user's, or when the caller is neither root nor
 *     a member of the group.
 */
int32_t mts_dev_share_runtime_dir(uint32_t *group);

PLATFORM_END_DECLS

/** @} */
#endif
