#include "switch/chip/system.h"

#include "switch/chip/checks.h"
#include "switch/chip/fields.h"
#include "switch/chip/smi.h"

#include <iterator>

namespace
{

enum Global_Field : uint8_t {
    USER_PRIO_CLASS,
    DSCP_CLASS,
    MAX_FRAME_SIZE,
    INGRESS_MIRROR_DEST,
    EGRESS_MIRROR_DEST,
    GLOBAL_FIELD_COUNT
};

/* `entries` fields of the same length behind each other, 16 bits in a register. */
struct Global_Row {
    Global_Field id;
    Family_Test support;
    Field first;
    uint8_t entries; /* a power of two */
};

constexpr Family_Test FRAME_SIZE = {Family_Compare::NONE, A_NO_FRAME_SIZE, 0, 0};

// clang-format off
constexpr Global_Row GLOBAL_ROWS[] = {
    /* id                  support            first field   entries */
    {USER_PRIO_CLASS,     FAMILY_PRIORITIES, {24,  0, 2},  8},
    {DSCP_CLASS,          FAMILY_PRIORITIES, {16,  0, 2}, 64},
    {MAX_FRAME_SIZE,      FRAME_SIZE,        {4,  10, 1},  1},
    {INGRESS_MIRROR_DEST, FAMILY_MIRROR,     {26,  8, 4},  1},
    {EGRESS_MIRROR_DEST,  FAMILY_MIRROR,     {26, 12, 4},  1},
};
// clang-format on

constexpr bool rows_are_in_order()
{
    for (uint8_t id = 0; id < GLOBAL_FIELD_COUNT; ++id) {
        if (GLOBAL_ROWS[id].id != id || (GLOBAL_ROWS[id].entries & (GLOBAL_ROWS[id].entries - 1))) {
            return false;
        }
    }
    return std::size(GLOBAL_ROWS) == GLOBAL_FIELD_COUNT;
}
static_assert(rows_are_in_order());

/* Only the index bits that the entries need count. */
Field place(const Global_Row &row, uint32_t index)
{
    const uint32_t bit = row.first.firstBit + row.first.length * (index & (row.entries - 1U));
    return {static_cast<uint8_t>(row.first.number + bit / 16), static_cast<uint8_t>(bit % 16),
            row.first.length};
}

int set_field(SW_Device *device, Global_Field id, uint32_t index, uint32_t value)
{
    const Global_Row &row = GLOBAL_ROWS[id];
    const int status = Check_Global(device, &value, row.support);
    return status == SW_STATUS_OK ? Field_Write_Global(device, place(row, index), value) : status;
}

int get_field(SW_Device *device, Global_Field id, uint32_t index, uint32_t *value)
{
    const Global_Row &row = GLOBAL_ROWS[id];
    const int status = Check_Global(device, value, row.support);
    return status == SW_STATUS_OK ? Field_Read_Global(device, place(row, index), value) : status;
}

/* 15 goes to the chip as it is, also when it is no port. */
int set_mirror(SW_Device *device, Global_Field id, uint32_t port)
{
    if (port == SW_MIRROR_NONE) {
        return set_field(device, id, 0, SW_MIRROR_NONE);
    }
    uint8_t hardware_port = 0;
    const int status = Check_Port(device, port, device, GLOBAL_ROWS[id].support, &hardware_port);
    return status == SW_STATUS_OK ? set_field(device, id, 0, hardware_port) : status;
}

int get_mirror(SW_Device *device, Global_Field id, uint32_t *port)
{
    uint32_t hardware_port = 0;
    const int status = get_field(device, id, 0, port != nullptr ? &hardware_port : nullptr);
    if (status != SW_STATUS_OK) {
        return status;
    }
    *port = 0;
    while (*port < device->numberOfPorts && SMI_Hardware_Port(*device, *port) != hardware_port) {
        ++*port;
    }
    if (*port == device->numberOfPorts) {
        *port = SW_MIRROR_NONE;
    }
    return status;
}

} // namespace

int swSetUserPrioToTrafficClass(SW_Device *device, uint32_t priority, uint32_t trafficClass)
{
    return set_field(device, USER_PRIO_CLASS, priority, trafficClass);
}

int swGetUserPrioToTrafficClass(SW_Device *device, uint32_t priority, uint32_t *trafficClass)
{
    return get_field(device, USER_PRIO_CLASS, priority, trafficClass);
}

int swSetDscpToTrafficClass(SW_Device *device, uint32_t dscp, uint32_t trafficClass)
{
    return set_field(device, DSCP_CLASS, dscp, trafficClass);
}

int swGetDscpToTrafficClass(SW_Device *device, uint32_t dscp, uint32_t *trafficClass)
{
    return get_field(device, DSCP_CLASS, dscp, trafficClass);
}

/* The bit is the inverse of the value: set for the larger frames. */
int swSetMaxFrameSize(SW_Device *device, uint32_t size)
{
    return set_field(device, MAX_FRAME_SIZE, 0, size == 1 ? 0 : 1);
}

int swGetMaxFrameSize(SW_Device *device, uint32_t *size)
{
    const int status = get_field(device, MAX_FRAME_SIZE, 0, size);
    if (status == SW_STATUS_OK) {
        *size = *size == 0 ? 1 : 0;
    }
    return status;
}

int swSetIngressMirrorDest(SW_Device *device, uint32_t port)
{
    return set_mirror(device, INGRESS_MIRROR_DEST, port);
}

int swGetIngressMirrorDest(SW_Device *device, uint32_t *port)
{
    return get_mirror(device, INGRESS_MIRROR_DEST, port);
}

int swSetEgressMirrorDest(SW_Device *device, uint32_t port)
{
    return set_mirror(device, EGRESS_MIRROR_DEST, port);
}

int swGetEgressMirrorDest(SW_Device *device, uint32_t *port)
{
    return get_mirror(device, EGRESS_MIRROR_DEST, port);
}
