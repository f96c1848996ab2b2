/* The simulated PHY's clause 22 registers, pages and negotiation. */

#include "simulator/phy.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

Sim_Phy make_phy(bool gigabit, uint8_t partner)
{
    Sim_Phy phy;
    Sim_Phy_Init(&phy, gigabit, partner);
    return phy;
}

TEST(SimulatedPhy, ResetsAGigabitPhyByClause22)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    constexpr uint16_t EXPECTED[] = {0x1140, 0x796D, 0x5349, 0xB5A1, 0x01E1, 0x41E1, 0x0001, 0, 0,
                                     0x0300, 0x3C00, 0,      0,      0,      0,      0x3000};
    for (uint8_t number = 0; number < 16; ++number) {
        EXPECT_EQ(Sim_Phy_Read(&phy, number), EXPECTED[number]) << int{number};
    }
}

TEST(SimulatedPhy, ResetsAFastPhyByClause22)
{
    Sim_Phy phy = make_phy(false, SIM_UP_TO_1000);
    constexpr uint16_t EXPECTED[] = {0x3100, 0x786D, 0x5349, 0xB5A1, 0x01E1, 0x41E1, 0x0001, 0,
                                     0,      0,      0,      0,      0,      0,      0,      0};
    for (uint8_t number = 0; number < 16; ++number) {
        EXPECT_EQ(Sim_Phy_Read(&phy, number), EXPECTED[number]) << int{number};
    }
}

TEST(SimulatedPhy, HearsNothingFromALineWithoutAPartner)
{
    Sim_Phy phy = make_phy(true, 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x7949);
    EXPECT_EQ(Sim_Phy_Read(&phy, 5), 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 6), 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 10), 0);
}

TEST(SimulatedPhy, KeepsReadOnlyRegistersWhenWritten)
{
    for (const bool gigabit : {false, true}) {
        Sim_Phy phy = make_phy(gigabit, SIM_UP_TO_1000);
        for (const uint8_t number : std::initializer_list<uint8_t>{1, 2, 3, 5, 6, 10, 15}) {
            const uint16_t before = Sim_Phy_Read(&phy, number);
            Sim_Phy_Write(&phy, number, static_cast<uint16_t>(~before));
            EXPECT_EQ(Sim_Phy_Read(&phy, number), before) << int{number};
        }
    }
}

TEST(SimulatedPhy, KeepsItsReservedBits)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    Sim_Phy_Write(&phy, 4, 0xFFFF);
    EXPECT_EQ(Sim_Phy_Read(&phy, 4), 0xBFFF);
    Sim_Phy_Write(&phy, 9, 0xFFFF);
    EXPECT_EQ(Sim_Phy_Read(&phy, 9), 0xFF00);
    Sim_Phy_Write(&phy, 0, 0x7FFF);
    EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0x7DC0);

    Sim_Phy fast = make_phy(false, SIM_UP_TO_1000);
    Sim_Phy_Write(&fast, 0, 0x7FFF);
    EXPECT_EQ(Sim_Phy_Read(&fast, 0), 0x7D80);
    Sim_Phy_Write(&fast, 9, 0xFFFF);
    EXPECT_EQ(Sim_Phy_Read(&fast, 9), 0);
}

TEST(SimulatedPhy, TakesWhatItAdvertisesOnlyWithARestart)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    Sim_Phy_Write(&phy, 9, 0);
    Sim_Phy_Write(&phy, 4, 0x0041);
    EXPECT_EQ(phy.link.speed, 2);
    Sim_Phy_Write(&phy, 0, 0x1140);
    EXPECT_EQ(phy.link.speed, 2);
    Sim_Phy_Write(&phy, 0, 0x1340);
    EXPECT_EQ(phy.link.speed, 0);
    EXPECT_TRUE(phy.link.full);
    EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0x1140) << "the restart bit clears itself";
}

TEST(SimulatedPhy, NegotiatesWhenNegotiationIsSwitchedOn)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    Sim_Phy_Write(&phy, 0, 0x0000);
    EXPECT_EQ(phy.link.speed, 0);
    Sim_Phy_Write(&phy, 0, 0x1000);
    EXPECT_EQ(phy.link.speed, 2);
}

TEST(SimulatedPhy, ShowsALostLinkOnceInItsStatus)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_100);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x796D);
    Sim_Phy_Write(&phy, 0, 0x1340);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x7969);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x796D);
    Sim_Phy_Plug(&phy, 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x7949);
    Sim_Phy_Plug(&phy, SIM_UP_TO_100);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x796D) << "the loss has been read";
}

TEST(SimulatedPhy, GoesDownWithItsPower)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_100);
    Sim_Phy_Write(&phy, 0, 0x1940);
    EXPECT_FALSE(phy.link.up);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), 0x7949);
    EXPECT_EQ(Sim_Phy_Read(&phy, 5), 0);
    Sim_Phy_Write(&phy, 0, 0x1140);
    EXPECT_TRUE(phy.link.up);
}

TEST(SimulatedPhy, StartsAnewWithTheResetBit)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    Sim_Phy_Write(&phy, 4, 0);
    Sim_Phy_Write(&phy, 9, 0);
    Sim_Phy_Write(&phy, 16, 0x1234);
    Sim_Phy_Write(&phy, 0, 0x8000);
    EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0x1140);
    EXPECT_EQ(Sim_Phy_Read(&phy, 4), 0x01E1);
    EXPECT_EQ(Sim_Phy_Read(&phy, 9), 0x0300);
    EXPECT_EQ(Sim_Phy_Read(&phy, 16), 0);
    EXPECT_EQ(phy.link.speed, 2);
}

TEST(SimulatedPhy, HasRegistersOfItsOwnOnEveryPage)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    for (uint16_t page = 1; page < SIM_PHY_PAGES; ++page) {
        Sim_Phy_Write(&phy, 22, page);
        Sim_Phy_Write(&phy, 0, static_cast<uint16_t>(0x4000 + page));
        Sim_Phy_Write(&phy, 16, static_cast<uint16_t>(0x8000 + page));
    }
    for (uint16_t page = 1; page < SIM_PHY_PAGES; ++page) {
        Sim_Phy_Write(&phy, 22, page);
        EXPECT_EQ(Sim_Phy_Read(&phy, 22), page);
        EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0x4000 + page);
        EXPECT_EQ(Sim_Phy_Read(&phy, 16), 0x8000 + page);
    }
    Sim_Phy_Write(&phy, 22, 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0x1140);
    EXPECT_EQ(Sim_Phy_Read(&phy, 16), 0);
}

TEST(SimulatedPhy, HasTheLedFunctionsInRegister16OfPage3)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    Sim_Phy_Write(&phy, 22, 3);
    EXPECT_EQ(Sim_Phy_Read(&phy, 16), 0x1021);
}

TEST(SimulatedPhy, AnswersAllOnesOnAPageThatIsNotThere)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    for (const uint16_t page : std::initializer_list<uint16_t>{0x20, 0x40, 0x80, 0xFF}) {
        Sim_Phy_Write(&phy, 22, page);
        EXPECT_EQ(Sim_Phy_Read(&phy, 22), page);
        Sim_Phy_Write(&phy, 0, 0);
        EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0xFFFF) << page;
    }
    Sim_Phy_Write(&phy, 22, 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 0), 0x1140);
}

TEST(SimulatedPhy, TakesTheLowEightBitsOfAPageNumber)
{
    Sim_Phy phy = make_phy(true, SIM_UP_TO_1000);
    for (const uint16_t above : std::initializer_list<uint16_t>{0x0100, 0x4000, 0xFF00}) {
        Sim_Phy_Write(&phy, 22, above | 3);
        EXPECT_EQ(Sim_Phy_Read(&phy, 22), 3) << above;
        EXPECT_EQ(Sim_Phy_Read(&phy, 16), 0x1021) << above;
        Sim_Phy_Write(&phy, 22, above | 0x20);
        EXPECT_EQ(Sim_Phy_Read(&phy, 16), 0xFFFF) << above;
    }
}

struct Negotiation {
    const char *name;
    bool gigabit;
    uint16_t advertisement;
    uint16_t gigabitControl;
    uint8_t partner;
    Sim_Link link;
    uint16_t status; /* read twice, since the restart loses the link of before */
    uint16_t partnerAbility;
    uint16_t gigabitStatus;
};

void PrintTo(const Negotiation &row, std::ostream *stream)
{
    *stream << row.name;
}

// clang-format off
constexpr Negotiation NEGOTIATIONS[] = {
    {"EverythingWithEverything", true, 0x01E1, 0x0300, SIM_UP_TO_1000, {true, true, 2}, 0x796D, 0x41E1, 0x3C00},
    {"Only1000Half", true, 0x0001, 0x0100, SIM_UP_TO_1000, {true, false, 2}, 0x796D, 0x41E1, 0x3C00},
    {"GigabitAt100", true, 0x01E1, 0x0300, SIM_UP_TO_100, {true, true, 1}, 0x796D, 0x41E1, 0x0000},
    {"Only100Full", true, 0x0101, 0x0000, SIM_UP_TO_1000, {true, true, 1}, 0x796D, 0x41E1, 0x0C00},
    {"Only100Half", true, 0x0081, 0x0000, SIM_UP_TO_1000, {true, false, 1}, 0x796D, 0x41E1, 0x0C00},
    {"Only10Full", true, 0x0041, 0x0000, SIM_UP_TO_1000, {true, true, 0}, 0x796D, 0x41E1, 0x0C00},
    {"Only10Half", true, 0x0021, 0x0000, SIM_UP_TO_1000, {true, false, 0}, 0x796D, 0x41E1, 0x0C00},
    {"HalfBefore10Full", true, 0x00E1, 0x0000, SIM_UP_TO_100, {true, false, 1}, 0x796D, 0x41E1, 0x0000},
    {"NothingInCommon", true, 0x0101, 0x0000, SIM_10_HALF, {false, false, 3}, 0x7949, 0x4021, 0x0000},
    {"NothingAdvertised", true, 0x0001, 0x0000, SIM_UP_TO_1000, {false, false, 3}, 0x7949, 0x41E1, 0x0C00},
    {"OnlyGigabitPartner", true, 0x01E1, 0x0000, SIM_1000_FULL, {false, false, 3}, 0x7949, 0x4001, 0x0800},
    {"FastWithEverything", false, 0x01E1, 0x0300, SIM_UP_TO_1000, {true, true, 1}, 0x786D, 0x41E1, 0x0000},
    {"FastWithGigabitOnly", false, 0x01E1, 0x0300, SIM_1000_FULL, {false, false, 3}, 0x7849, 0x4001, 0x0000},
    {"Fast10Half", false, 0x0021, 0x0000, SIM_UP_TO_100, {true, false, 0}, 0x786D, 0x41E1, 0x0000},
    {"NoPartner", true, 0x01E1, 0x0300, 0, {false, false, 3}, 0x7949, 0x0000, 0x0000},
};
// clang-format on

class SimulatedNegotiation : public testing::TestWithParam<Negotiation>
{
};

TEST_P(SimulatedNegotiation, EndsInTheBestInCommon)
{
    Sim_Phy phy = make_phy(GetParam().gigabit, GetParam().partner);
    Sim_Phy_Write(&phy, 4, GetParam().advertisement);
    Sim_Phy_Write(&phy, 9, GetParam().gigabitControl);
    Sim_Phy_Write(&phy, 0, static_cast<uint16_t>(Sim_Phy_Read(&phy, 0) | 0x1200));
    EXPECT_EQ(phy.link.up, GetParam().link.up);
    EXPECT_EQ(phy.link.full, GetParam().link.full);
    EXPECT_EQ(phy.link.speed, GetParam().link.speed);
    Sim_Phy_Read(&phy, 1);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1), GetParam().status);
    EXPECT_EQ(Sim_Phy_Read(&phy, 5), GetParam().partnerAbility);
    EXPECT_EQ(Sim_Phy_Read(&phy, 6), GetParam().partner != 0 ? 1 : 0);
    EXPECT_EQ(Sim_Phy_Read(&phy, 10), GetParam().gigabitStatus);
}

INSTANTIATE_TEST_SUITE_P(Rows, SimulatedNegotiation, testing::ValuesIn(NEGOTIATIONS),
                         [](const auto &row) { return std::string(row.param.name); });

struct Forced {
    const char *name;
    uint16_t control;
    uint8_t partner;
    Sim_Link link;
};

void PrintTo(const Forced &row, std::ostream *stream)
{
    *stream << row.name;
}

constexpr Forced FORCED[] = {
    {"10Half", 0x0000, SIM_UP_TO_1000, {true, false, 0}},
    {"10Full", 0x0100, SIM_UP_TO_1000, {true, true, 0}},
    {"100Half", 0x2000, SIM_UP_TO_1000, {true, false, 1}},
    {"100Full", 0x2100, SIM_UP_TO_1000, {true, true, 1}},
    {"1000Half", 0x0040, SIM_UP_TO_1000, {true, false, 2}},
    {"1000Full", 0x0140, SIM_UP_TO_1000, {true, true, 2}},
    {"SpeedThatTheOtherEndLacks", 0x0140, SIM_UP_TO_100, {false, false, 3}},
    {"ReservedSpeed", 0x2040, SIM_UP_TO_1000, {false, false, 3}},
    {"NoPartner", 0x2100, 0, {false, false, 3}},
};

class SimulatedForcedMode : public testing::TestWithParam<Forced>
{
};

TEST_P(SimulatedForcedMode, TakesSpeedAndDuplexFromTheControlRegister)
{
    Sim_Phy phy = make_phy(true, GetParam().partner);
    Sim_Phy_Write(&phy, 0, GetParam().control);
    EXPECT_EQ(phy.link.up, GetParam().link.up);
    EXPECT_EQ(phy.link.full, GetParam().link.full);
    EXPECT_EQ(phy.link.speed, GetParam().link.speed);
    EXPECT_EQ(Sim_Phy_Read(&phy, 1) & 0x0020, 0) << "nothing was negotiated";
    EXPECT_EQ(Sim_Phy_Read(&phy, 5), 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, SimulatedForcedMode, testing::ValuesIn(FORCED),
                         [](const auto &row) { return "To" + std::string(row.param.name); });

} // namespace
