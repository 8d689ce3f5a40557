/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * The C interface for C++20: owners, spans, words for statuses, every port in a loop, requests that do not wait.
 *
 * Header-only and over the C interface alone, whose records it hands out as they are; it neither throws nor needs
 * exceptions or run-time type information. As everywhere in C++, a program ends when std::vector or std::function find
 * no memory and exceptions are off. */
#ifndef PORT_MGR_PORT_MANAGER_HPP
#define PORT_MGR_PORT_MANAGER_HPP

#include "port_mgr/cpp/async_requests.hpp"
#include "port_mgr/cpp/names.hpp"
#include "port_mgr/cpp/owners.hpp"
#include "port_mgr/cpp/port_pages.hpp"
#include "port_mgr/cpp/queries.hpp"
#include "port_mgr/cpp/result.hpp"
#include "port_mgr/cpp/status.hpp"
#include "port_mgr/port_mgr_common.h"

#endif
