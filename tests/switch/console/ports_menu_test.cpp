#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace
{

class PortsMenu : public ConsoleSession
{
protected:
    std::string ports(std::string_view typed) { return visit(Ports_Setting_Menu, typed); }
};

const std::string MENU = ports_menu("0", " CPU:Auto for both speed and duplex");

#define PORTS_CONFIG_ROWS                                                                          \
    PORTS_CONFIG_HEADER                                                                            \
    " LAN  | Auto for both speed and duplex\n"                                                     \
    " WAN  | Auto for both speed and duplex\n"

// clang-format off
const Typed_Row VIEWS[] = {
    {"PortsConfig", "1\n0\n", MENU + PORTS_CONFIG_ROWS},
    {"Status", "p\n0\n", MENU + PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS},
    {"StatusUpperCase", "P\n0\n", MENU + PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS},
    {"Apply", "a\n0\n", MENU + APPLY_OK},
    {"ApplyUpperCase", "A\n0\n", MENU + APPLY_OK},
    {"EnterShowsTheMenuAgain", "\n0\n", MENU + MENU},
    {"KeysDoNotButEnterDoes", "1\n1\n\n0\n", MENU + PORTS_CONFIG_ROWS + PORTS_CONFIG_ROWS + MENU},
    {"UnknownKeys", "3\nb\n\xFF\nz\n0\n", MENU + MENU + MENU + MENU + MENU},
    {"LeaveWithOtherCharacterBehindZero", "0x\n", MENU},
    {"LastLineWithoutLineFeed", "1", MENU + PORTS_CONFIG_ROWS},
};
// clang-format on

class PortsMenuView : public PortsMenu, public testing::WithParamInterface<Typed_Row>
{
};

TEST_P(PortsMenuView, Shows)
{
    EXPECT_EQ(ports(GetParam().typed), GetParam().shown);
    EXPECT_EQ(force_exit_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Keys, PortsMenuView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(PortsMenu, TwoZeroesForceTheExit)
{
    EXPECT_EQ(ports("00\n"), MENU);
    EXPECT_EQ(force_exit_, 1U);
}

TEST_F(PortsMenu, StatusIsReadFromTheChipWhateverTheFlagsAre)
{
    set_flags(0, 0);
    EXPECT_EQ(ports("p\n0\n"), MENU + PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS);
}

/* LAN has mode 6, WAN 9. */
struct Answer {
    const char *name;
    const char *typed;
    uint32_t mode;
    const char *message;
    const char *after; /* what the menu's key does with the rest of the line */
};

void PrintTo(const Answer &answer, std::ostream *out)
{
    *out << answer.name;
}

// clang-format off
const Answer ANSWERS[] = {
    {"Good", "11\n", 11, "", ""},
    {"EnterCopiesLan", "\n", 6, "", ""},
    {"Letters", "abc\n", 0, "", ""},
    {"Negative", "-1\n", 0xFFFFFFFF, "", ""},
    {"TooHigh", "12\n", 6, "Value out of range!\n", ""},
    {"OverLongIsTheNextKey", "0000000000000000111\n", 11, "",
     PORTS_CONFIG_HEADER " LAN  | Speed 10Mbps and Half duplex  \n WAN  | Speed 10Mbps and Half duplex  \n"},
};
// clang-format on

class PortsMenuAutoMode : public PortsMenu, public testing::WithParamInterface<Answer>
{
};

TEST_P(PortsMenuAutoMode, IsStoredForLanAndWan)
{
    const Answer &answer = GetParam();
    lan().autoMode = 6;
    wan().autoMode = 9;
    EXPECT_EQ(
        ports(std::string("2\n1-2\n") + answer.typed + "0\n"),
        MENU + "Ports Range(0):" AUTO_MODE_LIST "Port Auto Mode(Speed 1000Mbps and Full duplex):" +
            answer.message + answer.after);
    EXPECT_EQ(lan().autoMode, answer.mode);
    EXPECT_EQ(wan().autoMode, answer.mode);
    EXPECT_EQ(running_.ports[0].autoMode, 0U);
}

INSTANTIATE_TEST_SUITE_P(Answers, PortsMenuAutoMode, testing::ValuesIn(ANSWERS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(PortsMenu, RefusesPortsOtherThanLanAndWan)
{
    EXPECT_EQ(ports("2\n\n2\n3\n\n0\n"),
              MENU +
                  "Ports Range(0):Range_Lexems_To_Vector:426: Range Error\n"
                  "ERROR: Range(\"0\") - Failed\n"
                  "Ports Range(0):Range_Lexems_To_Vector:426: Range Error\n"
                  "ERROR: Range(\"3\") - Failed\n" +
                  ports_menu("3", " CPU:Auto for both speed and duplex"));
}

/* The name is that of the n-th port of the range, the mode that of port n. */
TEST_F(PortsMenu, ShowsTheModeOfThePlaceInTheRange)
{
    running_.ports[0].autoMode = 1;
    lan().autoMode = 2;
    wan().autoMode = 3;
    SetRangeText(&SW_Ranges.ports, "1-2");
    EXPECT_EQ(ports("0\n"), ports_menu("1-2", " LAN:Auto for duplex only and speed 1000Mbps"
                                              " WAN:Auto for duplex only and speed 100Mbps"));
}

TEST_F(PortsMenu, ShowsTheRangeOfTheOtherMenusOnEntry)
{
    running_.ports[0].autoMode = 4;
    SetRangeText(&SW_Ranges.ports, "4");
    EXPECT_EQ(ports("0\n"), ports_menu("4", " SFP1:Auto for speed only and Full duplex"));
}

} // namespace
