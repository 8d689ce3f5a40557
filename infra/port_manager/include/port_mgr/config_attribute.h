/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_config_attribute config_attribute.h: attributes
 * @ingroup port_mgr
 * @brief The attributes of a port that can be configured, and the element that carries one.
 *
 * An attribute is a number and a value. The library knows the width and the byte order of the values of those numbers
 * that are attributes; the services know what they mean. Six kinds of values exist:
 *
 *     kind      bytes  in an element   in host memory
 *     byte      1                      one unsigned byte
 *     short     2      network order   uint16_t
 *     word      4      network order   uint32_t
 *     raw word  4      host order      32 bits, copied as they lie
 *     raw pair  8      host order      two uint32_t, copied as they lie
 *     text      81     as it lies      a field of 81 characters
 * @{
 */
#ifndef PORT_MGR_CONFIG_ATTRIBUTE_H
#define PORT_MGR_CONFIG_ATTRIBUTE_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** @name The attributes that the port manager implements: kind, unit, values
 * @{ */
#define PM_ATTR_ADMIN_STATE 1u           /**< byte: 1 up, 2 down */
#define PM_ATTR_PORT_MODE 2u             /**< word: one bit a mode, as in admin_mode of pm_port_info_t */
#define PM_ATTR_SPEED 3u                 /**< word, Mbit/s: 0 is automatic; 1, 2 and 110 are, with a ceiling */
#define PM_ATTR_TRUNK_MODE 4u            /**< byte: 1 off, 2 on, 3 auto */
#define PM_ATTR_BEACON_MODE 5u           /**< byte: 1 on, 2 off */
#define PM_ATTR_DESCRIPTION 6u           /**< text of at most 80 characters, NUL-terminated */
#define PM_ATTR_RX_BUF_SIZE 7u           /**< short, bytes */
#define PM_ATTR_RX_BB_CREDIT 8u          /**< word, credits; 0 is the default */
#define PM_ATTR_RATE_MODE 12u            /**< byte: 1 dedicated, 2 shared */
#define PM_ATTR_PORT_VSAN 15u            /**< short, a VSAN number */
#define PM_ATTR_DUPLEX 17u               /**< byte: 1 half, 2 full, 3 auto */
#define PM_ATTR_AUTO_NEG 23u             /**< word: 1 on, 2 off */
#define PM_ATTR_MTU 29u                  /**< word, bytes */
#define PM_ATTR_BANDWIDTH 36u            /**< word, kbit/s; 0 lets it follow from the speed */
#define PM_ATTR_DOWN_ON_LINK_FAILURE 44u /**< byte: 3 enabled, 4 disabled */
/** @} */

/** The bytes of the widest value, which is a text. */
#define PM_CFG_VALUE_SIZE 81

/** The element that carries an attribute. On the wire it ends where its value does. */
typedef struct PM_PACKED pm_cfg_tlv {
    uint8_t type;                     /**< the attribute's number */
    uint8_t length;                   /**< what the sender said about the value's bytes */
    uint8_t value[PM_CFG_VALUE_SIZE]; /**< as many bytes as the attribute's kind has, in the order of the kind */
} pm_cfg_tlv_t;
PM_STATIC_ASSERT(sizeof(pm_cfg_tlv_t) == 2 + PM_CFG_VALUE_SIZE, "pm_cfg_tlv_t has no padding");

/**
 * Writes an element. Thread-safe.
 *
 * These attributes can be written:
 *
 *     byte      1, 4, 5, 11, 12, 13, 17, 22, 34, 35, 42, 44, 48, 59, 71, 72, 84, 85
 *     short     7, 15, 52, 56, 57, 58
 *     word      2, 3, 8, 14, 21, 23, 25, 27, 28, 29, 31, 32, 36, 37, 41, 45,
 *               49, 50, 51, 53, 54, 61, 62, 67, 68, 78, 80, 81
 *     raw word  18, 19, 20, 47, 55
 *     raw pair  9, 30
 *     text      6, 83
 *
 * Null pointers leave an assertion report, and what has to be written is written all the same.
 *
 * @param[out] element  Room for 2 bytes and the value; not null.
 * @param[in]  type     The attribute's number.
 * @param[in]  length   Stored as it stands. It should be the width of the kind, which is what is written in any case.
 * @param[in]  value    The value in host memory, as wide as the kind says, at any address; not null.
 * @return 0, or PM_ERR_TLV for a number that has no kind, after a line on standard output and an assertion report; then
 *     type and length are written and the value is not.
 */
PM_API uint32_t pm_encode_tlv(pm_cfg_tlv_t *element, uint8_t type, uint8_t length, const void *value);

/**
 * Reads an element. Thread-safe.
 *
 * Fewer attributes can be read than written:
 *
 *     byte      1, 4, 5, 11, 12, 13, 17, 22, 34, 35, 42, 44, 48
 *     short     7, 15, 52
 *     word      2, 3, 8, 14, 21, 23, 25, 27, 28, 29, 31, 32, 36, 37, 41, 45,
 *               50, 54, 78, 80, 81
 *     raw pair  9
 *     text      6, 83
 *
 * @param[in]  element  The element, with all bytes of its kind whatever its length says; not null.
 * @param[out] type     The attribute's number; not null. Written in every case.
 * @param[out] length   The length that the element states; not null. Written in every case.
 * @param[out] value    The value in host memory, room for the width of the kind, at any address; not null.
 * @return 0, or PM_ERR_TLV for any other attribute, silently and with the value untouched.
 */
PM_API uint32_t pm_decode_tlv(const pm_cfg_tlv_t *element, uint8_t *type, uint8_t *length, void *value);

PM_END_DECLS

/** @} */
#endif
