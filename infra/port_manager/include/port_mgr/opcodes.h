/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_opcodes opcodes.h: opcodes and addresses
 * @ingroup port_mgr
 * @brief What the services of the port manager are asked, and where they answer.
 * @{
 */
#ifndef PORT_MGR_OPCODES_H
#define PORT_MGR_OPCODES_H

/** @name Messages of the transport
 * @{ */
#define MTS_OPC_PM_GET_PORT_INFO 324u         /**< records of ranges of ports, or of all */
#define MTS_OPC_PM_GET_NEXT_PORT_INFO 325u    /**< the record of the port that follows an interface */
#define MTS_OPC_PM_GET_IF_INDEX_LISTING 331u  /**< the indexes of a type of interfaces */
#define MTS_OPC_GET_SFP_DIAG_INFO 425u        /**< readings of a transceiver, from its line card */
#define MTS_OPC_PM_GET_CLEAR_ETH_STATS 1908u  /**< counters of an interface, from its line card; also clears them */
#define MTS_OPC_PM_GET_PORT_INFO_BRIEF 3141u  /**< the same as 324, in short */
#define MTS_OPC_PM_GET_MODULE_RESOURCES 3147u /**< resources of a module */
#define MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING 3151u /**< the indexes of a type in a startup description */
/** @} */

/** @name Requests over CMI
 * @{ */
#define CMI_OPC_GET_CHANNEL_MEMBER 624u          /**< a member of a port channel */
#define CMI_OPC_PM_SET_PORT_CONFIG 2826u         /**< set an attribute of ranges of interfaces */
#define CMI_OPC_PM_GET_PORT_CONFIG 2827u         /**< the configuration of ranges of interfaces */
#define CMI_OPC_PM_GET_FCOT_INFO 2832u           /**< transceivers of ranges of interfaces */
#define CMI_OPC_PM_CONFIG_SUB_INTF 2837u         /**< create and delete sub-interfaces */
#define CMI_OPC_PM_GET_MODULE_INTF_LISTING 2840u /**< the interfaces of a module */
#define CMI_OPC_PM_CONFIG_LOOPBACK 61468u        /**< create and delete loopback interfaces */
/** @} */

/** The address of the supervisor, where the port manager and its neighbours answer. */
#define PM_NODE_SUPERVISOR 0xfe000000u

/** @name Service access points
 * @{ */
#define PM_SAP_CHANNEL_MEMBER 34u    /**< membership of port channels */
#define PM_SAP_PORT_MANAGER 43u      /**< the port manager: every interface that no other service owns */
#define PM_SAP_ETHERNET 45u          /**< physical Ethernet ports */
#define PM_SAP_ETHERNET_CHANNEL 175u /**< Ethernet port channels and interfaces of types 20 and 26 */
#define PM_SAP_MGMT 179u             /**< interfaces of type 5 */
#define PM_SAP_SFP_DIAGNOSTICS 181u  /**< transceivers of a line card, on its node */
#define PM_SAP_MODULE_RESOURCE 902u  /**< resources of modules, on the node that the caller names */
#define PM_SAP_ETHERNET_STATS 943u   /**< counters of a line card's ports, on its node */
/** @} */

/** @} */
#endif
