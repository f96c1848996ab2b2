#include "tests/switch/chip/operations.h"

namespace
{

Vlan_Table_Entry entry_of(uint16_t vid)
{
    Vlan_Table_Entry entry = {};
    entry.vid = vid;
    return entry;
}

template <int (*Set)(SW_Device *, uint32_t, uint32_t)>
int set(SW_Device *device, uint32_t port)
{
    return Set(device, port, 1);
}

template <int (*Get)(SW_Device *, uint32_t, uint32_t *)>
int get(SW_Device *device, uint32_t port)
{
    uint32_t value = 0;
    return Get(device, port, &value);
}

template <int (*Set)(SW_Device *, uint32_t)>
int set(SW_Device *device, uint32_t /*port*/)
{
    return Set(device, SW_MIRROR_NONE);
}

template <int (*Get)(SW_Device *, uint32_t *)>
int get(SW_Device *device, uint32_t /*port*/)
{
    uint32_t value = 0;
    return Get(device, &value);
}

int set_egress_rate(SW_Device *device, uint32_t port)
{
    const SW_Egress_Rate rate = {GT_1M};
    return swSetEgressRate(device, port, &rate);
}

int get_egress_rate(SW_Device *device, uint32_t port)
{
    SW_Egress_Rate rate = {};
    return swGetEgressRate(device, port, &rate);
}

int set_bytes_count(SW_Device *device, uint32_t port)
{
    const SW_Bytes_Count flags = {1, 1, 1};
    return swSetBytesCount(device, port, &flags);
}

int get_bytes_count(SW_Device *device, uint32_t port)
{
    SW_Bytes_Count flags = {};
    return swGetBytesCount(device, port, &flags);
}

int add_entry(SW_Device *device, uint32_t /*port*/)
{
    const Vlan_Table_Entry entry = entry_of(7);
    return swVtuAddEntry(device, &entry);
}

int get_first(SW_Device *device, uint32_t /*port*/)
{
    Vlan_Table_Entry entry = {};
    return swVtuGetFirst(device, &entry);
}

int get_next(SW_Device *device, uint32_t /*port*/)
{
    Vlan_Table_Entry entry = entry_of(3);
    return swVtuGetNext(device, &entry);
}

int read_paged(SW_Device *device, uint32_t port)
{
    uint16_t value = 0;
    return swReadPagedPhyReg(device, port, 16, 3, &value);
}

int write_paged(SW_Device *device, uint32_t port)
{
    return swWritePagedPhyReg(device, port, 16, 3, 0x1234);
}

int flush(SW_Device *device, uint32_t /*port*/)
{
    return swVtuFlush(device);
}

#define PAIR(NAME, TAKES_PORT)                                                                     \
    {"swSet" #NAME, set<swSet##NAME>, TAKES_PORT},                                                 \
    {                                                                                              \
        "swGet" #NAME, get<swGet##NAME>, TAKES_PORT                                                \
    }

constexpr Operation_Call OPERATIONS[] = {
    PAIR(PortVid, true),
    PAIR(PortForceDefaultVid, true),
    PAIR(PortDot1qMode, true),
    PAIR(DiscardTagged, true),
    PAIR(DiscardUntagged, true),
    PAIR(EgressMode, true),
    PAIR(UseCoreTag, true),
    PAIR(PrioMapRule, true),
    PAIR(UseIpPrio, true),
    PAIR(UseUserPrio, true),
    PAIR(PortDefaultPrio, true),
    PAIR(Pri3Rate, true),
    PAIR(Pri2Rate, true),
    PAIR(Pri1Rate, true),
    PAIR(Pri0Rate, true),
    {"swSetEgressRate", set_egress_rate, true},
    {"swGetEgressRate", get_egress_rate, true},
    {"swSetBytesCount", set_bytes_count, true},
    {"swGetBytesCount", get_bytes_count, true},
    PAIR(IngressMirrorSource, true),
    PAIR(EgressMirrorSource, true),
    {"swGetPhyDetect", get<swGetPhyDetect>, true},
    {"swGetLinkState", get<swGetLinkState>, true},
    {"swGetDuplex", get<swGetDuplex>, true},
    {"swGetSpeedMode", get<swGetSpeedMode>, true},
    PAIR(UserPrioToTrafficClass, false),
    PAIR(DscpToTrafficClass, false),
    PAIR(MaxFrameSize, false),
    PAIR(IngressMirrorDest, false),
    PAIR(EgressMirrorDest, false),
    {"swVtuFlush", flush, false},
    {"swVtuAddEntry", add_entry, false},
    {"swVtuGetFirst", get_first, false},
    {"swVtuGetNext", get_next, false},
    {"swVtuGetEntryCount", get<swVtuGetEntryCount>, false},
    {"swSetPortAutoMode", set<swSetPortAutoMode>, true},
    {"swReadPagedPhyReg", read_paged, true},
    {"swWritePagedPhyReg", write_paged, true},
};

} // namespace

void PrintTo(const Operation_Call &call, std::ostream *stream)
{
    *stream << call.name;
}

std::span<const Operation_Call> all_operations()
{
    return OPERATIONS;
}
