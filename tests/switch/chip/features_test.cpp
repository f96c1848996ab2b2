#include "tests/switch/chip/features.h"

#include "switch/chip/chips.h"
#include "switch/chip/families.h"
#include "tests/switch/chip/fake_bus.h"
#include "tests/switch/chip/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace
{

/* A chip under test: one family bit set by hand, or a row of the chip table. */
struct Chip {
    std::string name;
    const Features *features;
    uint16_t validPorts;
    uint32_t port;         /* the driver's port that the tests use, */
    uint32_t hardwarePort; /* and its hardware port */
};

void PrintTo(const Chip &chip, std::ostream *stream)
{
    *stream << chip.name;
}

const Features &features_of(const std::string &bit)
{
    const auto &all = all_features();
    return *std::ranges::find(all, bit, &Features::name);
}

std::vector<Chip> all_chips()
{
    std::vector<Chip> chips;
    for (const Features &features : all_features()) {
        chips.push_back({features.name, &features, 0x3F, 3, 3});
    }
    const struct {
        const char *name;
        const char *bit;
        uint16_t validPorts;
        uint32_t port;
        uint32_t hardwarePort;
    } rows[] = {
        {"Chip105", "A13", 0x003F, 5, 5}, {"Chip095", "A11", 0x07FF, 10, 10},
        {"Chip106", "A15", 0x00FF, 7, 7}, {"Chip1A7", "A16", 0x03FF, 9, 9},
        {"Chip083", "A9", 0x03FF, 9, 9},  {"Chip165", "A22", 0x003F, 5, 5},
        {"Chip352", "A27", 0x007F, 6, 6}, {"Chip065", "A17", 0x003F, 5, 5},
        {"Chip063", "A4", 0x003F, 5, 5},  {"Chip052", "A2", 0x003F, 5, 5},
        {"Chip060", "A0", 0x003F, 5, 5},  {"Chip250", "B9", 0x0063, 3, 6},
        {"Chip071", "B4", 0x007F, 6, 6},  {"ChipC00", "B11", 0x07FF, 10, 10},
    };
    for (const auto &row : rows) {
        chips.push_back(
            {row.name, &features_of(row.bit), row.validPorts, row.port, row.hardwarePort});
    }
    return chips;
}

/* Where a field stands, or that the chip does not have it. */
struct Place {
    bool supported;
    unsigned number;
    unsigned firstBit;
    unsigned length;
};

constexpr Place NOT_SUPPORTED = {false, 0, 0, 0};

class EveryChip : public testing::TestWithParam<Chip>
{
protected:
    const Features &features() const { return *GetParam().features; }
    bool newer() const { return features()["layout"] == "N"; }
    uint32_t port() const { return GetParam().port; }
    unsigned port_address() const { return (newer() ? 16 : 16 + 8) + GetParam().hardwarePort; }
    unsigned global_address() const { return newer() ? 27 : 16 + 15; }

    /* Trace of reading a register, and of writing it after that. */
    static std::string line(char operation, unsigned address, unsigned number, unsigned value)
    {
        char text[40];
        snprintf(text, sizeof text, "%c %02x %02x %04x\n", static_cast<unsigned char>(operation),
                 address, number, value);
        return text;
    }

    static std::string change(unsigned address, const Place &place, unsigned old, unsigned value)
    {
        const unsigned mask = ((1U << place.length) - 1) << place.firstBit;
        return line('R', address, place.number, old) +
               line('W', address, place.number, (old & ~mask) | value << place.firstBit);
    }

    /* Runs one set with 0 over ones and with the largest value over zeros. */
    template <typename Set>
    void expect_set(const char *name, unsigned address, const Place &place, Set set)
    {
        const unsigned largest = (1U << place.length) - 1;
        bus.fill(0xFFFF);
        bus.take_trace();
        const int status = set(0U);
        if (!place.supported) {
            EXPECT_EQ(status, SW_STATUS_NOT_SUPPORTED) << name;
            EXPECT_EQ(bus.take_trace(), "") << name;
            return;
        }
        EXPECT_EQ(status, SW_STATUS_OK) << name;
        EXPECT_EQ(bus.take_trace(), change(address, place, 0xFFFF, 0)) << name;
        bus.fill(0);
        EXPECT_EQ(set(largest), SW_STATUS_OK) << name;
        EXPECT_EQ(bus.take_trace(), change(address, place, 0, largest)) << name;
    }

    /* Runs one get on the register with only the field set, and with all but the field. */
    template <typename Get>
    void expect_get(const char *name, unsigned address, const Place &place, Get get)
    {
        const unsigned largest = (1U << place.length) - 1;
        uint32_t value = 99;
        bus.take_trace();
        if (!place.supported) {
            EXPECT_EQ(get(&value), SW_STATUS_NOT_SUPPORTED) << name;
            EXPECT_EQ(bus.take_trace(), "") << name;
            EXPECT_EQ(value, 99U) << name;
            return;
        }
        const unsigned ones = (largest << place.firstBit) & 0xFFFF;
        for (const bool inside : {true, false}) {
            const unsigned content = inside ? ones : 0xFFFF & ~ones;
            bus.registers[address][place.number] = static_cast<uint16_t>(content);
            EXPECT_EQ(get(&value), SW_STATUS_OK) << name;
            EXPECT_EQ(value, inside ? largest : 0) << name;
            EXPECT_EQ(bus.take_trace(), line('R', address, place.number, content)) << name;
        }
    }

    unsigned number_in(const char *column) const
    {
        return static_cast<unsigned>(std::stoul(features()[column]));
    }

    Place where(const char *column, Place place) const
    {
        return features().has(column) ? place : NOT_SUPPORTED;
    }

    Fake_Bus bus;
    SW_Device device = make_device(GetParam().features->familyA, GetParam().features->familyB,
                                   GetParam().validPorts);
};

struct Field_Case {
    const char *name;
    int (*set)(SW_Device *device, uint32_t port, uint32_t value); /* null: get only */
    int (*get)(SW_Device *device, uint32_t port, uint32_t *value);
    Place place;
};

TEST_P(EveryChip, PortFieldsAreWhereItsFamilyHasThem)
{
    const unsigned dot1q = features().has("dot1q") ? number_in("dot1q") : 0;
    const bool rates_in_9 = features()["p123"] == "9";
    const unsigned rates = rates_in_9 ? 9 : 10;
    const bool wide_prio = features()["dprio"] == "3b";
    const unsigned link = number_in("link");
    const unsigned shift = rates_in_9 ? 0 : 1;
    const Field_Case cases[] = {
        {"PortVid", swSetPortVid, swGetPortVid, {true, 7, 0, 12}},
        {"PortForceDefaultVid", swSetPortForceDefaultVid, swGetPortForceDefaultVid,
         where("FDV", {true, 7, 12, 1})},
        {"PortDot1qMode", swSetPortDot1qMode, swGetPortDot1qMode,
         where("dot1q", {true, dot1q, 10, 2})},
        {"DiscardTagged", swSetDiscardTagged, swGetDiscardTagged, where("disc", {true, 8, 9, 1})},
        {"DiscardUntagged", swSetDiscardUntagged, swGetDiscardUntagged,
         where("disc", {true, 8, 8, 1})},
        {"UseCoreTag", swSetUseCoreTag, swGetUseCoreTag, where("core", {true, 4, 15, 1})},
        {"PrioMapRule", swSetPrioMapRule, swGetPrioMapRule, where("egm", {true, 4, 6, 1})},
        {"UseIpPrio", swSetUseIpPrio, swGetUseIpPrio, where("egm", {true, 4, 5, 1})},
        {"UseUserPrio", swSetUseUserPrio, swGetUseUserPrio, where("egm", {true, 4, 4, 1})},
        {"PortDefaultPrio", swSetPortDefaultPrio, swGetPortDefaultPrio,
         where("egm", {true, 7, wide_prio ? 13U : 14U, wide_prio ? 3U : 2U})},
        {"Pri3Rate", swSetPri3Rate, swGetPri3Rate, where("p123", {true, rates, 14 - shift, 1})},
        {"Pri2Rate", swSetPri2Rate, swGetPri2Rate, where("p123", {true, rates, 13 - shift, 1})},
        {"Pri1Rate", swSetPri1Rate, swGetPri1Rate, where("p123", {true, rates, 12 - shift, 1})},
        {"IngressMirrorSource", swSetIngressMirrorSource, swGetIngressMirrorSource,
         where("mir", {true, 8, 5, 1})},
        {"EgressMirrorSource", swSetEgressMirrorSource, swGetEgressMirrorSource,
         where("mir", {true, 8, 4, 1})},
        {"PhyDetect", nullptr, swGetPhyDetect, where("phyd", {true, 0, 12, 1})},
        {"LinkState", nullptr, swGetLinkState, {true, 0, link, 1}},
    };
    for (const Field_Case &row : cases) {
        if (row.set != nullptr) {
            expect_set(row.name, port_address(), row.place,
                       [&](uint32_t value) { return row.set(&device, port(), value); });
        }
        expect_get(row.name, port_address(), row.place,
                   [&](uint32_t *value) { return row.get(&device, port(), value); });
    }
}

TEST_P(EveryChip, EgressModeTakesAddTagWhereTheFamilyHasIt)
{
    const Place place = where("egm", {true, 4, 12, 2});
    expect_get("EgressMode", port_address(), place,
               [&](uint32_t *value) { return swGetEgressMode(&device, port(), value); });
    for (uint32_t mode = 0; mode <= 3; ++mode) {
        const bool accepted = place.supported && (mode < 3 || features().has("add"));
        bus.fill(0xCFFF);
        bus.take_trace();
        EXPECT_EQ(swSetEgressMode(&device, port(), mode),
                  accepted ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(bus.take_trace(), accepted ? change(port_address(), place, 0xCFFF, mode) : "");
    }
}

TEST_P(EveryChip, DuplexAndSpeedComeFromPortRegisterOrPhy)
{
    if (features()["dupspd"] == "PHY") {
        const unsigned phy = 16 + GetParam().hardwarePort;
        bus.registers[phy][0] = 0x2100; /* forced: 100 Mbit/s, full */
        uint32_t value = 99;
        EXPECT_EQ(swGetDuplex(&device, port(), &value), SW_STATUS_OK);
        EXPECT_EQ(value, 1U);
        EXPECT_EQ(swGetSpeedMode(&device, port(), &value), SW_STATUS_OK);
        EXPECT_EQ(value, 1U);
        EXPECT_EQ(bus.take_trace(), line('R', phy, 0, 0x2100) + line('R', phy, 0, 0x2100));
        return;
    }
    const bool wide = features()["dupspd"] == "n";
    EXPECT_EQ(wide, newer());
    expect_get("Duplex", port_address(), {true, 0, wide ? 10U : 9U, 1},
               [&](uint32_t *value) { return swGetDuplex(&device, port(), value); });
    expect_get("SpeedMode", port_address(), {true, 0, 8, wide ? 2U : 1U},
               [&](uint32_t *value) { return swGetSpeedMode(&device, port(), value); });
}

TEST_P(EveryChip, PhyOperationsReachThePhyOfThePort)
{
    const unsigned at = (newer() ? 0 : 16) + GetParam().hardwarePort;
    bus.registers[at][2] = 0x1234;
    uint16_t value = 99;
    EXPECT_EQ(swSetPortAutoMode(&device, port(), 8), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), line('R', at, 2, 0x1234) + line('R', at, 3, 0) +
                                    line('R', at, 1, 0) + line('R', at, 4, 0) +
                                    line('W', at, 4, 0x0100) + line('R', at, 0, 0) +
                                    line('W', at, 0, 0x1200));
    EXPECT_EQ(swWritePagedPhyReg(&device, port(), 16, 3, 0x102E), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), line('R', at, 22, 0) + line('W', at, 22, 3) +
                                    line('W', at, 16, 0x102E) + line('W', at, 22, 0));
    EXPECT_EQ(swReadPagedPhyReg(&device, port(), 16, 3, &value), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), line('R', at, 22, 0) + line('W', at, 22, 3) +
                                    line('R', at, 16, 0x102E) + line('W', at, 22, 0));
    EXPECT_EQ(value, 0x102E);
}

TEST_P(EveryChip, BytesCountIsWhereItsFamilyHasIt)
{
    const std::string &cell = features()["bc"];
    const SW_Bytes_Count flags = {1, 0, 1};
    SW_Bytes_Count got = {9, 9, 9};
    const int expected = cell == "-" ? SW_STATUS_NOT_SUPPORTED : SW_STATUS_OK;
    bus.fill(0xFFFF);
    EXPECT_EQ(swSetBytesCount(&device, port(), &flags), expected);
    EXPECT_EQ(swGetBytesCount(&device, port(), &got), expected);
    const unsigned at = port_address();
    if (cell == "9+10") {
        EXPECT_EQ(bus.take_trace(), line('R', at, 9, 0xFFFF) + line('W', at, 9, 0xFFFF) +
                                        line('R', at, 10, 0xFFFF) + line('W', at, 10, 0xDFFF) +
                                        line('R', at, 9, 0xFFFF) + line('R', at, 10, 0xDFFF));
    } else if (cell == "10") {
        EXPECT_EQ(bus.take_trace(), line('R', at, 10, 0xFFFF) + line('W', at, 10, 0xFFDF) +
                                        line('R', at, 10, 0xFFDF));
    } else {
        EXPECT_EQ(bus.take_trace(), "");
        EXPECT_EQ(got.countIfg, 9U);
        return;
    }
    EXPECT_EQ(got.limitMgmt, 1U);
    EXPECT_EQ(got.countIfg, 0U);
    EXPECT_EQ(got.countPre, 1U);
}

/* GT_1M by divisor formula: 8000000 / (1000 x factor). */
unsigned one_megabit(const std::string &formula)
{
    return formula == "32up" ? 250 : formula == "28dn" ? 285 : 200;
}

TEST_P(EveryChip, Pri0RateIsCodeOrDivisor)
{
    const std::string &cell = features()["p0"];
    const bool code = cell == "v10";
    const Place place = code ? Place{true, 10, 8, 3} : Place{true, 9, 0, 12};
    const unsigned content = code ? GT_1M : one_megabit(features()["div0"]);
    uint32_t rate = 99;
    bus.fill(0xF000);
    if (cell == "-") {
        EXPECT_EQ(swSetPri0Rate(&device, port(), GT_1M), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(swGetPri0Rate(&device, port(), &rate), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(bus.take_trace(), "");
        return;
    }
    EXPECT_EQ(swSetPri0Rate(&device, port(), GT_1M), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), change(port_address(), place, 0xF000, content));
    EXPECT_EQ(swGetPri0Rate(&device, port(), &rate), SW_STATUS_OK);
    EXPECT_EQ(rate, GT_1M);
    EXPECT_EQ(swSetPri0Rate(&device, port(), 8), code ? SW_STATUS_BAD_PARAM : SW_STATUS_OK);
}

TEST_P(EveryChip, EgressRateIsCodeDivisorOrInItsBlock)
{
    const std::string &cell = features()["er"];
    const SW_Egress_Rate rate = {GT_1M};
    const SW_Egress_Rate rate_16M = {GT_16M};
    SW_Egress_Rate got = {99};
    bus.fill(0xF000);
    if (cell == "-") {
        EXPECT_EQ(swSetEgressRate(&device, port(), &rate), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(swGetEgressRate(&device, port(), &got), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(bus.take_trace(), "");
        return;
    }
    Place place = {true, 10, 0, 12};
    unsigned content = GT_1M;
    if (cell == "v10") {
        place.length = 3;
    } else if (cell == "d10") {
        content = one_megabit(features()["dive"]);
    } else {
        /* Block of its own: register 10 over 32 for set A, register 9 over 40 for set B. */
        place.number = features().familyA != 0 ? 10 : 9;
        content = features().familyA != 0 ? 250 : 200;
    }
    EXPECT_EQ(swSetEgressRate(&device, port(), &rate), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), change(port_address(), place, 0xF000, content));
    EXPECT_EQ(swGetEgressRate(&device, port(), &got), SW_STATUS_OK);
    EXPECT_EQ(got.rate, GT_1M);
    EXPECT_EQ(swSetEgressRate(&device, port(), &rate_16M),
              cell == "v10" ? SW_STATUS_BAD_PARAM : SW_STATUS_OK);
}

TEST_P(EveryChip, GlobalFieldsAreWhereItsFamilyHasThem)
{
    const unsigned at = global_address();
    const Place prio = where("egm", {true, 24, 10, 2});
    const Place dscp = where("egm", {true, 21, 12, 2});
    expect_set("UserPrio", at, prio,
               [&](uint32_t v) { return swSetUserPrioToTrafficClass(&device, 5, v); });
    expect_get("UserPrio", at, prio,
               [&](uint32_t *v) { return swGetUserPrioToTrafficClass(&device, 5, v); });
    expect_set("Dscp", at, dscp,
               [&](uint32_t v) { return swSetDscpToTrafficClass(&device, 46, v); });
    expect_get("Dscp", at, dscp,
               [&](uint32_t *v) { return swGetDscpToTrafficClass(&device, 46, v); });
    /* The frame size is the inverse of its bit. */
    const Place size = where("mfs", {true, 4, 10, 1});
    expect_set("MaxFrameSize", at, size,
               [&](uint32_t v) { return swSetMaxFrameSize(&device, 1 - v); });
    expect_get("MaxFrameSize", at, size, [&](uint32_t *v) {
        const int status = swGetMaxFrameSize(&device, v);
        *v = status == SW_STATUS_OK ? 1 - *v : *v;
        return status;
    });
    const Place ingress = where("mir", {true, 26, 8, 4});
    const Place egress = where("mir", {true, 26, 12, 4});
    expect_set("IngressMirrorDest", at, ingress,
               [&](uint32_t v) { return swSetIngressMirrorDest(&device, v); });
    expect_get("IngressMirrorDest", at, ingress,
               [&](uint32_t *v) { return swGetIngressMirrorDest(&device, v); });
    expect_set("EgressMirrorDest", at, egress,
               [&](uint32_t v) { return swSetEgressMirrorDest(&device, v); });
    expect_get("EgressMirrorDest", at, egress,
               [&](uint32_t *v) { return swGetEgressMirrorDest(&device, v); });
}

TEST_P(EveryChip, VlanTableEntryCarriesWhatTheFamilyHas)
{
    /* The same six ports of every chip: the table's own tests have other numbers of ports. */
    device.validPortMask = 0x3F;
    device.numberOfPorts = 6;
    const bool oldest = features()["dot1q"] == "6";
    const unsigned at = global_address();
    bus.vtu_address = static_cast<int>(at);
    const Vlan_Table_Entry entry = {static_cast<uint16_t>(oldest ? 10 : 0x2A),
                                    0x123,
                                    {2, 3, 1, 1, 0, 0},
                                    {3, 3, 2, 1, 0, 3},
                                    {},
                                    1,
                                    5,
                                    7,
                                    {},
                                    1,
                                    1,
                                    6,
                                    {},
                                    1,
                                    2,
                                    {},
                                    1};
    if (!features().has("FDV")) {
        EXPECT_EQ(swVtuFlush(&device), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(bus.take_trace(), "");
        return;
    }
    const unsigned word8 =
        (features().has("vst") ? 0x00C0U : 0) | (features().has("r8") ? 0xED00U : 0);
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), line('R', at, 5, 0) + line('W', at, 5, 0x9000));
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), line('R', at, 5, 0x1000) + line('W', at, 6, 0x1123) +
                                    line('W', at, 7, features().has("vst") ? 0x59FE : 0x1132) +
                                    line('W', at, 8, word8) +
                                    line('W', at, 9, newer() ? 0xD000 : 0) +
                                    line('W', at, 5, oldest ? 0xB00A : 0xB20A));
    /* One more database than the chip has. */
    Vlan_Table_Entry beyond = entry;
    beyond.dbNum = oldest ? 16 : 64;
    EXPECT_EQ(swVtuAddEntry(&device, &beyond), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(bus.take_trace(), "");
    --beyond.dbNum;
    EXPECT_EQ(swVtuAddEntry(&device, &beyond), SW_STATUS_OK);
    bus.take_trace();
}

TEST_P(EveryChip, VlanTableEntryIsReadOnEveryChip)
{
    device.validPortMask = 0x3F;
    device.numberOfPorts = 6;
    bus.vtu_address = static_cast<int>(global_address());
    bus.vtu[0x123] = {0x000A, {0x59FE, 0x00C0, 0xD000}};
    const std::array<uint8_t, 11> tags = {2, 3, 1, 1, 0, 0};
    std::array<uint8_t, 11> states = {3, 3, 2, 1, 0, 3};
    if (!features().has("vst")) {
        states = {};
    }
    Vlan_Table_Entry entry = {};
    EXPECT_EQ(swVtuGetFirst(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(entry.vid, 0x123);
    EXPECT_EQ(entry.dbNum, 10);
    EXPECT_EQ(std::to_array(entry.memberTagP), tags);
    EXPECT_EQ(std::to_array(entry.portStateP), states);
    EXPECT_EQ(entry.vidPriOverride, newer() ? 1U : 0U);
    EXPECT_EQ(entry.vidPriority, newer() ? 5 : 0);
}

TEST_P(EveryChip, SetUpStepsOfTheLoadAreThoseOfItsFamily)
{
    EXPECT_EQ(Family_Passes(FAMILY_GLOBAL_SETUP, device), features().has("gset"));
    EXPECT_EQ(Family_Passes(FAMILY_PORT_SETUP, device), features().has("pset"));
    EXPECT_EQ(Family_Passes(FAMILY_EXTENDED, device), features().has("x60"));
    EXPECT_EQ(Family_Passes(FAMILY_BLOCK_SETUP, device), features().has("x7e"));
}

TEST_P(EveryChip, PortBeyondItsPortsIsABadParameterWithoutAccess)
{
    for (const Operation_Call &operation : all_operations()) {
        if (operation.takesPort) {
            for (const uint32_t beyond : {uint32_t{device.numberOfPorts}, 16U, 255U, 0xFFFFFFFFU}) {
                EXPECT_EQ(operation.call(&device, beyond), SW_STATUS_BAD_PARAM) << operation.name;
            }
        }
    }
    EXPECT_EQ(bus.take_trace(), "");
}

TEST(EveryChipRows, HaveAsManyChipsAsTheTable)
{
    EXPECT_EQ(all_chips().size() - all_features().size(), Chip_Table().size());
}

INSTANTIATE_TEST_SUITE_P(Families, EveryChip, testing::ValuesIn(all_chips()),
                         [](const auto &row) { return row.param.name; });

} // namespace
