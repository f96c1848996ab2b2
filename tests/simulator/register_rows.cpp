#include "tests/simulator/register_model.h"

namespace
{

using Bits = Model_Bits;
using Sets = Model_Sets;
using Values = Model_Values;
using enum Model_Kind;

/* Which chips have what. */
bool always(Sets)
{
    return true;
}

bool vlans(Sets s)
{
    return (s.a & 0x7efffd97) > 3 || (s.b & 0x3f1) != 0;
}

bool discards(Sets s)
{
    return (s.a & 0x7efff800) != 0 || (s.b & 0x3f1) != 0;
}

bool priorities(Sets s)
{
    return (s.a & 0x7effffd7) != 0 || (s.b & 0x3f1) != 0;
}

bool core_tag(Sets s)
{
    return (s.a & 0x1f800) != 0;
}

bool rate_flags(Sets s)
{
    return (s.a & 0x1ffd0) != 0;
}

bool ingress_rate(Sets s)
{
    return (s.a & 0x1ffd0) != 0 || (s.b & 0x200) != 0;
}

bool egress_rate(Sets s)
{
    return (s.a & 0x7effafd0) != 0 || (s.b & 0x3f1) != 0;
}

bool mirrors(Sets s)
{
    return (s.a & 0x7ef9f800) != 0 || (s.b & 0x3f1) != 0;
}

bool frame_size(Sets s)
{
    return (s.a & 0x7ee00000) == 0;
}

bool wide_layout(Sets s)
{
    return model_is_newer(s) || (s.a & 0x60000) != 0 || (s.b & 0x3f1) != 0;
}

bool rate_flags_in_9(Sets s)
{
    return (s.a & 0x7ef9fc03) > 3 || (s.b & 0x800) != 0;
}

bool link_in_11(Sets s)
{
    return (s.a & 0x7ef9fe00) != 0 || (s.b & 0x800) != 0;
}

/* Wrappers that give all operations one form. */
template <int (*Set)(SW_Device *, uint32_t, uint32_t)>
int set_one(SW_Device *device, uint32_t index, const Values &values)
{
    return Set(device, index, values[0]);
}

template <int (*Get)(SW_Device *, uint32_t, uint32_t *)>
int get_one(SW_Device *device, uint32_t index, Values *values)
{
    return Get(device, index, values != nullptr ? values->data() : nullptr);
}

template <int (*Set)(SW_Device *, uint32_t)>
int set_one(SW_Device *device, uint32_t /*index*/, const Values &values)
{
    return Set(device, values[0]);
}

template <int (*Get)(SW_Device *, uint32_t *)>
int get_one(SW_Device *device, uint32_t /*index*/, Values *values)
{
    return Get(device, values != nullptr ? values->data() : nullptr);
}

int set_egress_rate(SW_Device *device, uint32_t port, const Values &values)
{
    const SW_Egress_Rate rate = {values[0]};
    return swSetEgressRate(device, port, &rate);
}

int get_egress_rate(SW_Device *device, uint32_t port, Values *values)
{
    if (values == nullptr) {
        return swGetEgressRate(device, port, nullptr);
    }
    SW_Egress_Rate rate = {(*values)[0]};
    const int status = swGetEgressRate(device, port, &rate);
    (*values)[0] = rate.rate;
    return status;
}

int set_bytes_count(SW_Device *device, uint32_t port, const Values &values)
{
    const SW_Bytes_Count flags = {values[0], values[1], values[2]};
    return swSetBytesCount(device, port, &flags);
}

int get_bytes_count(SW_Device *device, uint32_t port, Values *values)
{
    if (values == nullptr) {
        return swGetBytesCount(device, port, nullptr);
    }
    SW_Bytes_Count flags = {(*values)[0], (*values)[1], (*values)[2]};
    const int status = swGetBytesCount(device, port, &flags);
    *values = {flags.limitMgmt, flags.countIfg, flags.countPre};
    return status;
}

int set_phy_page(SW_Device *device, uint32_t port, const Values &values)
{
    return swWritePagedPhyReg(device, port, values[2], values[1], static_cast<uint16_t>(values[0]));
}

int get_phy_page(SW_Device *device, uint32_t port, Values *values)
{
    if (values == nullptr) {
        return swReadPagedPhyReg(device, port, 0, 1, nullptr);
    }
    auto content = static_cast<uint16_t>((*values)[0]);
    const int status = swReadPagedPhyReg(device, port, (*values)[2], (*values)[1], &content);
    if (status == SW_STATUS_OK) {
        (*values)[0] = content;
    }
    return status;
}

/* The bits of a row that are the same on every chip. */
template <unsigned Number, unsigned First, unsigned Length>
Bits at(Sets)
{
    return {Number, First, Length};
}

#define TWINS(NAME) set_one<swSet##NAME>, get_one<swGet##NAME>
#define GET_ONLY(NAME) nullptr, get_one<swGet##NAME>

// clang-format off
constexpr Model_Row ROWS[] = {
    {"PortVid", NUMBER, always, at<7, 0, 12>, TWINS(PortVid)},
    {"PortForceDefaultVid", FLAG, vlans, at<7, 12, 1>, TWINS(PortForceDefaultVid)},
    {"PortDot1qMode", NUMBER, vlans,
     [](Sets s) { return wide_layout(s) ? Bits{8, 10, 2} : Bits{6, 10, 2}; }, TWINS(PortDot1qMode)},
    {"DiscardTagged", FLAG, discards, at<8, 9, 1>, TWINS(DiscardTagged)},
    {"DiscardUntagged", FLAG, discards, at<8, 8, 1>, TWINS(DiscardUntagged)},
    {"EgressMode", EGRESS_MODE, priorities, at<4, 12, 2>, TWINS(EgressMode)},
    {"UseCoreTag", FLAG, core_tag, at<4, 15, 1>, TWINS(UseCoreTag)},
    {"PrioMapRule", FLAG, priorities, at<4, 6, 1>, TWINS(PrioMapRule)},
    {"UseIpPrio", FLAG, priorities, at<4, 5, 1>, TWINS(UseIpPrio)},
    {"UseUserPrio", FLAG, priorities, at<4, 4, 1>, TWINS(UseUserPrio)},
    {"PortDefaultPrio", NUMBER, priorities,
     [](Sets s) { return wide_layout(s) ? Bits{7, 13, 3} : Bits{7, 14, 2}; }, TWINS(PortDefaultPrio)},
    {"Pri3Rate", FLAG, rate_flags,
     [](Sets s) { return rate_flags_in_9(s) ? Bits{9, 14, 1} : Bits{10, 13, 1}; }, TWINS(Pri3Rate)},
    {"Pri2Rate", FLAG, rate_flags,
     [](Sets s) { return rate_flags_in_9(s) ? Bits{9, 13, 1} : Bits{10, 12, 1}; }, TWINS(Pri2Rate)},
    {"Pri1Rate", FLAG, rate_flags,
     [](Sets s) { return rate_flags_in_9(s) ? Bits{9, 12, 1} : Bits{10, 11, 1}; }, TWINS(Pri1Rate)},
    {"Pri0Rate", PRI0_RATE, ingress_rate, nullptr, TWINS(Pri0Rate)},
    {"EgressRate", EGRESS_RATE, egress_rate, nullptr, set_egress_rate, get_egress_rate},
    {"BytesCount", BYTES_COUNT, ingress_rate, nullptr, set_bytes_count, get_bytes_count},
    {"IngressMirrorSource", FLAG, mirrors, at<8, 5, 1>, TWINS(IngressMirrorSource)},
    {"EgressMirrorSource", FLAG, mirrors, at<8, 4, 1>, TWINS(EgressMirrorSource)},
    {"PhyDetect", FACT, model_is_newer, at<0, 12, 1>, GET_ONLY(PhyDetect)},
    {"LinkState", FACT, always,
     [](Sets s) { return link_in_11(s) ? Bits{0, 11, 1} : Bits{0, 12, 1}; }, GET_ONLY(LinkState)},
    {"Duplex", LINK_FACT, always,
     [](Sets s) { return model_is_newer(s) ? Bits{0, 10, 1} : Bits{0, 9, 1}; }, GET_ONLY(Duplex)},
    {"SpeedMode", LINK_FACT, always,
     [](Sets s) { return model_is_newer(s) ? Bits{0, 8, 2} : Bits{0, 8, 1}; }, GET_ONLY(SpeedMode)},
    {"UserPrioToTrafficClass", CLASS, priorities, at<24, 0, 2>, TWINS(UserPrioToTrafficClass)},
    {"DscpToTrafficClass", CLASS, priorities, at<16, 0, 2>, TWINS(DscpToTrafficClass)},
    {"MaxFrameSize", FRAME_SIZE, frame_size, at<4, 10, 1>, TWINS(MaxFrameSize)},
    {"IngressMirrorDest", MIRROR_DEST, mirrors, at<26, 8, 4>, TWINS(IngressMirrorDest)},
    {"EgressMirrorDest", MIRROR_DEST, mirrors, at<26, 12, 4>, TWINS(EgressMirrorDest)},
    {"PagedPhyReg", PHY_PAGE, always, nullptr, set_phy_page, get_phy_page},
};
// clang-format on

} // namespace

bool model_is_newer(Sets s)
{
    return (s.a & 0x7ef9fe03) > 3 || (s.b & 0x800) != 0;
}

bool model_is_oldest(Sets s)
{
    return (s.a & 0x7ef9fe00) == 0 && (s.b & 0x800) == 0 && (s.a & 0x60000) == 0 &&
           (s.b & 0x3f1) == 0;
}

std::span<const Model_Row> model_rows()
{
    return ROWS;
}
