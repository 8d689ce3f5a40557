/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_info_record port_info_record.h: the record of a port
 * @ingroup port_mgr
 * @brief What the port manager knows about one port.
 * @{
 */
#ifndef PORT_MGR_PORT_INFO_RECORD_H
#define PORT_MGR_PORT_INFO_RECORD_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * One port, 388 bytes, host order unless a member says network order.
 *
 * Members that begin with "TLV" come from the attribute elements of an answer and are zero when the service sent none.
 */
typedef struct PM_PACKED pm_port_info {
    if_index_t if_index;           /**< the port's interface index */
    uint32_t admin_mode;           /**< configured port mode: one bit a mode, or a mask of several */
    char description[81];          /**< text; one that fills all 81 bytes has no terminating NUL */
    uint32_t admin_speed;          /**< configured speed in Mbit/s; 0 automatic; 1, 2, 110 too, with a ceiling */
    uint8_t admin_state;           /**< configured state: 1 up, 2 down */
    uint32_t oper_mode;            /**< port mode in operation, one bit a mode */
    uint16_t flowctrl_receive;     /**< TLV: receive flow control: 1 and 2 on, 4 and 8 desired, else off */
    uint8_t lane_state[4];         /**< state of each lane of the port */
    uint16_t flowctrl_send;        /**< TLV: send flow control, as for receive */
    uint16_t port_vsan;            /**< the VSAN of the port */
    uint32_t bb_credit[5];         /**< buffer-to-buffer credits; bit 30 marks mode E, bit 31 Fx; element 4 is TLV */
    uint16_t rx_buf_size;          /**< receive buffer size in bytes */
    uint8_t oper_state;            /**< state in operation: 1 up, 2 down, 4 testing, 8 trunking */
    uint32_t fcid;                 /**< Fibre Channel address, network order */
    uint32_t ip_address;           /**< IPv4 address, network order */
    uint32_t ip_mask;              /**< IPv4 network mask, network order */
    uint32_t oper_speed;           /**< speed in operation in Mbit/s; 0xffffffff unknown */
    uint32_t mtu;                  /**< largest transmission unit in bytes */
    uint32_t bandwidth;            /**< bandwidth in kbit/s */
    uint16_t native_vlan;          /**< TLV: the untagged VLAN of a trunk */
    uint8_t state_reason;          /**< why the port is in its state, one of the reason codes */
    uint8_t admin_trunk_mode;      /**< configured trunking: 1 off, 2 on, 3 auto */
    uint8_t oper_trunk_mode;       /**< trunking in operation, same values */
    uint32_t promiscuous;          /**< TLV: 1 on, 2 off */
    uint8_t beacon_mode;           /**< 1 on, 2 off */
    uint32_t service_state;        /**< 0 in service, 1 out of service */
    uint32_t port_type;            /**< 1 external, 2 internal, 3 hidden */
    uint32_t auto_neg;             /**< TLV: 1 on, 2 off */
    uint8_t duplex;                /**< TLV: 1 half, 2 full, 3 auto */
    uint8_t rate_mode;             /**< TLV: 1 dedicated, 2 shared */
    uint8_t snmp_trap[2];          /**< link-up and link-down traps: 1 on, 2 off */
    uint32_t down_on_link_failure; /**< 3 enabled, 4 disabled */
    if_index_t parent_if_index;    /**< the channel that the port is a member of, or 0 */
    uint32_t link_error_count[5];  /**< link failures, sync losses, signal losses, invalid words, bad CRCs */
    uint8_t phy_layer;             /**< TLV: 1 FC, 2 Ethernet, 3 FC virtual, 4 in-band, 5 EOBC, 6 management */
    uint8_t encap;                 /**< TLV: 1 normal, 2 EISL, 3 internal */
    uint8_t bb_scn;                /**< TLV: buffer-to-buffer state change notification: 1 on, 2 off */
    uint8_t ignore_param;          /**< TLV: 1 bit errors ignored, 2 not */
    uint32_t track_mode;           /**< TLV: 0 operationally bound, 1 force shut */
    uint32_t delayed_trap_state;   /**< TLV: 1 disabled, 2 FX */
    uint32_t ec_bb_credit;         /**< TLV: extended credits; 0 default */
    uint8_t fcot_present;          /**< TLV: 1 when a transceiver is plugged in */
    uint8_t tlv_67;                /**< TLV: attribute 67 */
    uint8_t tlv_68;                /**< TLV: attribute 68 */
    uint32_t bb_credit_multiplier; /**< TLV: 0xffffffff default */
    uint32_t bb_credit_performance_buf; /**< TLV: performance buffers; 0 default */
    uint8_t tlv_78;                     /**< TLV: attribute 78 */
    uint32_t tlv_81;                    /**< TLV: attribute 81, network order */
    uint8_t reserved_49[4];             /**< always zero */
    uint32_t tlv_82;                    /**< TLV: attribute 82, network order */
    uint8_t reserved_51[3];             /**< always zero */
    uint32_t fcip_params[7];            /**< TLV: FCIP: the peer's IPv4 address in network order, then the
                                                        attributes 86, 87, 90, 89, 88 and 91 */
    uint16_t fcip_tcp_port;             /**< TLV: FCIP: the peer's TCP port */
    uint32_t tlv_93;                    /**< TLV: attribute 93 */
    uint16_t tlv_94;                    /**< TLV: attribute 94 */
    uint32_t tlv_95;                    /**< TLV: attribute 95 */
    char owner[81];                     /**< TLV: who owns the port, at most 80 characters and a NUL. An answer
                                                        about several ports gives all of them the same text */
    uint8_t reserved_58[3];             /**< always zero */
    uint32_t tlv_106;                   /**< TLV: attribute 106 */
    uint32_t tlv_107;                   /**< TLV: attribute 107 */
    uint32_t tlv_108;                   /**< TLV: attribute 108 */
} pm_port_info_t;
PM_STATIC_ASSERT(sizeof(pm_port_info_t) == 388, "pm_port_info_t is 388 bytes for every caller");

/**
 * Turns one base record and the attribute elements of its answer into a port record. Thread-safe.
 *
 * An element that cannot be read, or has a type that this library does not know, is named on standard output. Null
 * pointers leave an assertion report and are then used all the same.
 *
 * @param[in]  base_record  189 bytes as they came over the wire, not null.
 * @param[in]  tlv_array    The attribute elements of all ports of the answer, or null when there are none; the
 *                          platform's tlv_array_... functions read it. Elements of other ports are passed over.
 * @param[out] record       Written whole; not null.
 * @return 0 always.
 */
PM_API uint32_t pm_parse_port_info(const void *base_record, const void *tlv_array, pm_port_info_t *record);

PM_END_DECLS

/** @} */
#endif
