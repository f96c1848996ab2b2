#include "switch/chip/port_operations.h"

#include "switch/chip/checks.h"
#include "switch/chip/fields.h"
#include "switch/chip/phy_link.h"

#include <iterator>

namespace
{

enum Port_Field : uint8_t {
    PORT_VID,
    FORCE_DEFAULT_VID,
    DOT1Q_MODE,
    DISCARD_TAGGED,
    DISCARD_UNTAGGED,
    EGRESS_MODE,
    USE_CORE_TAG,
    PRIO_MAP_RULE,
    USE_IP_PRIO,
    USE_USER_PRIO,
    DEFAULT_PRIO,
    PRI3_RATE,
    PRI2_RATE,
    PRI1_RATE,
    INGRESS_MIRROR_SOURCE,
    EGRESS_MIRROR_SOURCE,
    PHY_DETECT,
    LINK_STATE,
    DUPLEX,
    SPEED_MODE,
    PORT_FIELD_COUNT
};

enum Value_Kind : uint8_t { BOOLEAN, NUMBER };

struct Port_Row {
    Port_Field id;
    Value_Kind kind;
    Field field;     /* where `layout` is true, */
    Field otherwise; /* and where it is false */
    Family_Test support;
    Family_Test layout;
    int (*checkValue)(const SW_Device &device, uint32_t value); /* may be null */
};

int check_egress_mode(const SW_Device &device, uint32_t mode)
{
    if (mode > GT_ADD_TAG) {
        return SW_STATUS_FAIL;
    }
    return mode == GT_ADD_TAG && (device.familyA & A_ADD_TAG) == 0 ? SW_STATUS_NOT_SUPPORTED
                                                                   : SW_STATUS_OK;
}

constexpr Family_Test ALWAYS = FAMILY_ALWAYS;
constexpr Family_Test NEWER = FAMILY_NEWER_LAYOUT;
constexpr Family_Test NEWER_OR_GROUP = FAMILY_NEWER_OR_GROUP;
constexpr Family_Test VLAN = FAMILY_VLAN;
constexpr Family_Test PRIORITIES = FAMILY_PRIORITIES;
constexpr Family_Test MIRROR = FAMILY_MIRROR;
constexpr Family_Test DISCARD = {Family_Compare::ANY, A_DISCARD, B_GROUP, 0};
constexpr Family_Test CORE_TAG = {Family_Compare::ANY, A_CORE_TAG, 0, 0};
constexpr Family_Test RATE_FLAGS = {Family_Compare::ANY, A_INGRESS_RATE, 0, 0};
/* One bit away from the newer layout: meant. */
constexpr Family_Test RATE_FLAGS_9 = {Family_Compare::ABOVE_3, A_PRI123_FLAGS, B_NEWER_LAYOUT, 0};
constexpr Family_Test LINK_11 = {Family_Compare::ANY, A_LINK_BIT_11, B_NEWER_LAYOUT, 0};

// clang-format off
constexpr Port_Row PORT_ROWS[] = {
    /* id                  kind     field       otherwise    support     layout          check */
    {PORT_VID,              NUMBER,  {7, 0, 12}, {},          ALWAYS,     ALWAYS,         nullptr},
    {FORCE_DEFAULT_VID,     BOOLEAN, {7, 12, 1}, {},          VLAN,       ALWAYS,         nullptr},
    {DOT1Q_MODE,            NUMBER,  {8, 10, 2}, {6, 10, 2},  VLAN,       NEWER_OR_GROUP, nullptr},
    {DISCARD_TAGGED,        BOOLEAN, {8, 9, 1},  {},          DISCARD,    ALWAYS,         nullptr},
    {DISCARD_UNTAGGED,      BOOLEAN, {8, 8, 1},  {},          DISCARD,    ALWAYS,         nullptr},
    {EGRESS_MODE,           NUMBER,  {4, 12, 2}, {},          PRIORITIES, ALWAYS,         check_egress_mode},
    {USE_CORE_TAG,          BOOLEAN, {4, 15, 1}, {},          CORE_TAG,   ALWAYS,         nullptr},
    {PRIO_MAP_RULE,         BOOLEAN, {4, 6, 1},  {},          PRIORITIES, ALWAYS,         nullptr},
    {USE_IP_PRIO,           BOOLEAN, {4, 5, 1},  {},          PRIORITIES, ALWAYS,         nullptr},
    {USE_USER_PRIO,         BOOLEAN, {4, 4, 1},  {},          PRIORITIES, ALWAYS,         nullptr},
    {DEFAULT_PRIO,          NUMBER,  {7, 13, 3}, {7, 14, 2},  PRIORITIES, NEWER_OR_GROUP, nullptr},
    {PRI3_RATE,             BOOLEAN, {9, 14, 1}, {10, 13, 1}, RATE_FLAGS, RATE_FLAGS_9,   nullptr},
    {PRI2_RATE,             BOOLEAN, {9, 13, 1}, {10, 12, 1}, RATE_FLAGS, RATE_FLAGS_9,   nullptr},
    {PRI1_RATE,             BOOLEAN, {9, 12, 1}, {10, 11, 1}, RATE_FLAGS, RATE_FLAGS_9,   nullptr},
    {INGRESS_MIRROR_SOURCE, BOOLEAN, {8, 5, 1},  {},          MIRROR,     ALWAYS,         nullptr},
    {EGRESS_MIRROR_SOURCE,  BOOLEAN, {8, 4, 1},  {},          MIRROR,     ALWAYS,         nullptr},
    {PHY_DETECT,            BOOLEAN, {0, 12, 1}, {},          NEWER,      ALWAYS,         nullptr},
    {LINK_STATE,            BOOLEAN, {0, 11, 1}, {0, 12, 1},  ALWAYS,     LINK_11,        nullptr},
    {DUPLEX,                BOOLEAN, {0, 10, 1}, {0, 9, 1},   ALWAYS,     NEWER,          nullptr},
    {SPEED_MODE,            NUMBER,  {0, 8, 2},  {0, 8, 1},   ALWAYS,     NEWER,          nullptr},
};
// clang-format on

constexpr bool rows_are_in_order()
{
    for (uint8_t id = 0; id < PORT_FIELD_COUNT; ++id) {
        const Port_Row &row = PORT_ROWS[id];
        const bool has_other = row.layout.compare != Family_Compare::ALWAYS;
        if (row.id != id || row.field.length == 0 || has_other != (row.otherwise.length != 0)) {
            return false;
        }
    }
    return std::size(PORT_ROWS) == PORT_FIELD_COUNT;
}
static_assert(rows_are_in_order());

const Field &place(const SW_Device &device, const Port_Row &row)
{
    return Family_Passes(row.layout, device) ? row.field : row.otherwise;
}

int set_field(SW_Device *device, uint32_t port, Port_Field id, uint32_t value)
{
    const Port_Row &row = PORT_ROWS[id];
    uint8_t hardware_port = 0;
    int status = Check_Port(device, port, &value, row.support, &hardware_port);
    if (status == SW_STATUS_OK && row.checkValue != nullptr) {
        status = row.checkValue(*device, value);
    }
    if (status != SW_STATUS_OK) {
        return status;
    }
    const uint32_t content = row.kind == BOOLEAN ? (value == 1 ? 1 : 0) : value;
    return Field_Write_Port(device, hardware_port, place(*device, row), content);
}

int get_field(SW_Device *device, uint32_t port, Port_Field id, uint32_t *value)
{
    const Port_Row &row = PORT_ROWS[id];
    uint8_t hardware_port = 0;
    const int status = Check_Port(device, port, value, row.support, &hardware_port);
    return status == SW_STATUS_OK
               ? Field_Read_Port(device, hardware_port, place(*device, row), value)
               : status;
}

/* Duplex and speed: from the PHY on the chips that have no port register for them. */
int get_link_fact(SW_Device *device, uint32_t port, Port_Field id, uint32_t PHY_Link::*fact,
                  uint32_t *value)
{
    uint8_t hardware_port = 0;
    int status = Check_Port(device, port, value, FAMILY_ALWAYS, &hardware_port);
    if (status != SW_STATUS_OK) {
        return status;
    }
    if (!Family_Passes(FAMILY_EXTENDED, *device)) {
        return get_field(device, port, id, value);
    }
    PHY_Link link = {};
    status = PHY_Read_Link(device, hardware_port, &link);
    if (status == SW_STATUS_OK) {
        *value = link.*fact;
    }
    return status;
}

constexpr Field NEWER_MANAGEMENT = {9, 15, 1};
constexpr Field NEWER_GAP_AND_PREAMBLE = {10, 12, 2};
constexpr Field OLDER_BYTES_COUNT = {10, 4, 3};
constexpr uint32_t PREAMBLE = 1;
constexpr uint32_t GAP = 2;
constexpr uint32_t MANAGEMENT = 4;

} // namespace

int swSetPortVid(SW_Device *device, uint32_t port, uint32_t vid)
{
    return set_field(device, port, PORT_VID, vid);
}

int swGetPortVid(SW_Device *device, uint32_t port, uint32_t *vid)
{
    return get_field(device, port, PORT_VID, vid);
}

int swSetPortForceDefaultVid(SW_Device *device, uint32_t port, uint32_t force)
{
    return set_field(device, port, FORCE_DEFAULT_VID, force);
}

int swGetPortForceDefaultVid(SW_Device *device, uint32_t port, uint32_t *force)
{
    return get_field(device, port, FORCE_DEFAULT_VID, force);
}

int swSetPortDot1qMode(SW_Device *device, uint32_t port, uint32_t mode)
{
    return set_field(device, port, DOT1Q_MODE, mode);
}

int swGetPortDot1qMode(SW_Device *device, uint32_t port, uint32_t *mode)
{
    return get_field(device, port, DOT1Q_MODE, mode);
}

int swSetDiscardTagged(SW_Device *device, uint32_t port, uint32_t discard)
{
    return set_field(device, port, DISCARD_TAGGED, discard);
}

int swGetDiscardTagged(SW_Device *device, uint32_t port, uint32_t *discard)
{
    return get_field(device, port, DISCARD_TAGGED, discard);
}

int swSetDiscardUntagged(SW_Device *device, uint32_t port, uint32_t discard)
{
    return set_field(device, port, DISCARD_UNTAGGED, discard);
}

int swGetDiscardUntagged(SW_Device *device, uint32_t port, uint32_t *discard)
{
    return get_field(device, port, DISCARD_UNTAGGED, discard);
}

int swSetEgressMode(SW_Device *device, uint32_t port, uint32_t mode)
{
    return set_field(device, port, EGRESS_MODE, mode);
}

int swGetEgressMode(SW_Device *device, uint32_t port, uint32_t *mode)
{
    return get_field(device, port, EGRESS_MODE, mode);
}

int swSetUseCoreTag(SW_Device *device, uint32_t port, uint32_t use)
{
    return set_field(device, port, USE_CORE_TAG, use);
}

int swGetUseCoreTag(SW_Device *device, uint32_t port, uint32_t *use)
{
    return get_field(device, port, USE_CORE_TAG, use);
}

int swSetPrioMapRule(SW_Device *device, uint32_t port, uint32_t rule)
{
    return set_field(device, port, PRIO_MAP_RULE, rule);
}

int swGetPrioMapRule(SW_Device *device, uint32_t port, uint32_t *rule)
{
    return get_field(device, port, PRIO_MAP_RULE, rule);
}

int swSetUseIpPrio(SW_Device *device, uint32_t port, uint32_t use)
{
    return set_field(device, port, USE_IP_PRIO, use);
}

int swGetUseIpPrio(SW_Device *device, uint32_t port, uint32_t *use)
{
    return get_field(device, port, USE_IP_PRIO, use);
}

int swSetUseUserPrio(SW_Device *device, uint32_t port, uint32_t use)
{
    return set_field(device, port, USE_USER_PRIO, use);
}

int swGetUseUserPrio(SW_Device *device, uint32_t port, uint32_t *use)
{
    return get_field(device, port, USE_USER_PRIO, use);
}

int swSetPortDefaultPrio(SW_Device *device, uint32_t port, uint32_t priority)
{
    return set_field(device, port, DEFAULT_PRIO, priority);
}

int swGetPortDefaultPrio(SW_Device *device, uint32_t port, uint32_t *priority)
{
    return get_field(device, port, DEFAULT_PRIO, priority);
}

int swSetPri3Rate(SW_Device *device, uint32_t port, uint32_t limit)
{
    return set_field(device, port, PRI3_RATE, limit);
}

int swGetPri3Rate(SW_Device *device, uint32_t port, uint32_t *limit)
{
    return get_field(device, port, PRI3_RATE, limit);
}

int swSetPri2Rate(SW_Device *device, uint32_t port, uint32_t limit)
{
    return set_field(device, port, PRI2_RATE, limit);
}

int swGetPri2Rate(SW_Device *device, uint32_t port, uint32_t *limit)
{
    return get_field(device, port, PRI2_RATE, limit);
}

int swSetPri1Rate(SW_Device *device, uint32_t port, uint32_t limit)
{
    return set_field(device, port, PRI1_RATE, limit);
}

int swGetPri1Rate(SW_Device *device, uint32_t port, uint32_t *limit)
{
    return get_field(device, port, PRI1_RATE, limit);
}

int swSetBytesCount(SW_Device *device, uint32_t port, const SW_Bytes_Count *flags)
{
    uint8_t hardware_port = 0;
    int status = Check_Port(device, port, flags, FAMILY_INGRESS_RATE, &hardware_port);
    if (status != SW_STATUS_OK) {
        return status;
    }
    const uint32_t management = flags->limitMgmt == 1 ? MANAGEMENT : 0;
    const uint32_t others =
        (flags->countIfg == 1 ? GAP : 0) | (flags->countPre == 1 ? PREAMBLE : 0);
    if (!Family_Passes(FAMILY_NEWER_LAYOUT, *device)) {
        return Field_Write_Port(device, hardware_port, OLDER_BYTES_COUNT, management | others);
    }
    status = Field_Write_Port(device, hardware_port, NEWER_MANAGEMENT, management != 0 ? 1 : 0);
    return status == SW_STATUS_OK
               ? Field_Write_Port(device, hardware_port, NEWER_GAP_AND_PREAMBLE, others)
               : status;
}

int swGetBytesCount(SW_Device *device, uint32_t port, SW_Bytes_Count *flags)
{
    uint8_t hardware_port = 0;
    int status = Check_Port(device, port, flags, FAMILY_INGRESS_RATE, &hardware_port);
    if (status != SW_STATUS_OK) {
        return status;
    }
    uint32_t bits = 0;
    uint32_t management = 0;
    if (Family_Passes(FAMILY_NEWER_LAYOUT, *device)) {
        status = Field_Read_Port(device, hardware_port, NEWER_MANAGEMENT, &management);
        if (status == SW_STATUS_OK) {
            status = Field_Read_Port(device, hardware_port, NEWER_GAP_AND_PREAMBLE, &bits);
        }
    } else {
        status = Field_Read_Port(device, hardware_port, OLDER_BYTES_COUNT, &bits);
        management = bits & MANAGEMENT;
    }
    if (status == SW_STATUS_OK) {
        *flags = {management != 0 ? 1U : 0, (bits & GAP) != 0 ? 1U : 0,
                  (bits & PREAMBLE) != 0 ? 1U : 0};
    }
    return status;
}

int swSetIngressMirrorSource(SW_Device *device, uint32_t port, uint32_t mirror)
{
    return set_field(device, port, INGRESS_MIRROR_SOURCE, mirror);
}

int swGetIngressMirrorSource(SW_Device *device, uint32_t port, uint32_t *mirror)
{
    return get_field(device, port, INGRESS_MIRROR_SOURCE, mirror);
}

int swSetEgressMirrorSource(SW_Device *device, uint32_t port, uint32_t mirror)
{
    return set_field(device, port, EGRESS_MIRROR_SOURCE, mirror);
}

int swGetEgressMirrorSource(SW_Device *device, uint32_t port, uint32_t *mirror)
{
    return get_field(device, port, EGRESS_MIRROR_SOURCE, mirror);
}

int swGetPhyDetect(SW_Device *device, uint32_t port, uint32_t *detected)
{
    return get_field(device, port, PHY_DETECT, detected);
}

int swGetLinkState(SW_Device *device, uint32_t port, uint32_t *up)
{
    return get_field(device, port, LINK_STATE, up);
}

int swGetDuplex(SW_Device *device, uint32_t port, uint32_t *full)
{
    return get_link_fact(device, port, DUPLEX, &PHY_Link::full, full);
}

int swGetSpeedMode(SW_Device *device, uint32_t port, uint32_t *speed)
{
    return get_link_fact(device, port, SPEED_MODE, &PHY_Link::speed, speed);
}
