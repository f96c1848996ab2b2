#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>

namespace
{

class VlanMenu : public ConsoleSession
{
protected:
    std::string vlan(std::string_view typed) { return visit(Vlan_Setting_Menu, typed); }
};

const std::string MENU = vlan_menu({});

// clang-format off
const Typed_Row VIEWS[] = {
    {"VlanTab", "1\n0\n", MENU + VLAN_HEADER FACTORY_VLAN_ROWS + MENU},
    {"Status", "p\n0\n", MENU + VLAN_HEADER CHIP_VLAN_ROWS + MENU},
    {"StatusUpperCase", "P\n0\n", MENU + VLAN_HEADER CHIP_VLAN_ROWS + MENU},
    {"Apply", "a\n0\n", MENU + APPLY_OK},
    {"ApplyUpperCase", "A\n0\n", MENU + APPLY_OK},
    {"Enter", "\n0\n", MENU},
    {"UnknownKeys", "c\nd\n:\nC\n0\n", MENU + MENU + MENU + MENU + MENU},
    {"CharactersOutsideTheKeys", " \n/\nq\n\xFF\n0\n", MENU + MENU + MENU + MENU + MENU},
    {"LeaveWithOtherCharacterBehindZero", "0x\n", MENU},
    {"LastLineWithoutLineFeed", "1", MENU + VLAN_HEADER FACTORY_VLAN_ROWS + MENU},
};
// clang-format on

class VlanMenuView : public VlanMenu, public testing::WithParamInterface<Typed_Row>
{
};

TEST_P(VlanMenuView, Shows)
{
    EXPECT_EQ(vlan(GetParam().typed), GetParam().shown);
    EXPECT_EQ(force_exit_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Keys, VlanMenuView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(VlanMenu, TwoZeroesForceTheExit)
{
    EXPECT_EQ(vlan("00\n"), MENU);
    EXPECT_EQ(force_exit_, 1U);
}

/* The whole menu once the range is LAN and WAN, in factory settings unless told otherwise. */
Vlan_Items both_ports()
{
    return {.range = "1-2",
            .vid = " LAN:1 WAN:1",
            .force = " LAN:False WAN:False",
            .dot1q = " LAN:Disable WAN:Disable",
            .tagged = " LAN:False WAN:False",
            .untagged = " LAN:False WAN:False",
            .egress = " LAN:Unmodify egress WAN:Unmodify egress",
            .core = " LAN:False WAN:False",
            .rate = " LAN:Not limited WAN:Not limited",
            .bytes = " LAN:Limit MGMT(False),Count IFG(True),Count Pre(True)"
                     " WAN:Limit MGMT(False),Count IFG(True),Count Pre(True)"};
}

/* What an answer does: KEEP gives LAN's value to WAN as well. */
constexpr uint32_t KEEP = 0x12345678;

struct Outcome {
    uint32_t value;
    const char *message;
    const char *item; /* as the menu shows the value */
};

/* A key whose setting LAN has at `before` and WAN at 0. */
struct Set_Key {
    const char *name;
    char key;
    uint32_t SW_Port_Config::*field;
    uint32_t before;
    const char *prompt;
    std::string Vlan_Items::*items;
    Outcome outcomes[8]; /* by answer */
};

void PrintTo(const Set_Key &key, std::ostream *out)
{
    *out << key.name;
}

struct Answer {
    const char *name;
    const char *typed;
};

using Port = SW_Port_Config;

// clang-format off
const Answer ANSWERS[] = {
    {"Two", "2\n"}, {"Yes", "y\n"}, {"Enter", "\n"}, {"Letters", "nonsense\n"}, {"Negative", "-2\n"},
    {"Thirteen", "13\n"}, {"CarriageReturn", "\r\n"}, {"OverLongIsTheNextKey", "000000000000000002q\n"},
};

#define OUT_OF_RANGE "Value out of range!\n"
#define YES_NO_OUTCOMES(text) \
    {{0, "", "False"}, {1, "", "True"}, {KEEP, "", text}, {0, "", "False"}, {0, "", "False"}, \
     {0, "", "False"}, {0, "", "False"}, {0, "", "False"}}

const Set_Key SET_KEYS[] = {
    {"ForceDefaultVid", '3', &Port::vidForceDefault, 1, "Force Default VID(y/n)(yes):", &Vlan_Items::force,
     YES_NO_OUTCOMES("True")},
    {"Dot1qMode", '4', &Port::dot1qMode, 3, "Vlan Dot1q Mode(0(Disable)/1(Fallback)/2(Check)/3(Secure))(Secure):",
     &Vlan_Items::dot1q,
     {{2, "", "Check"}, {0, "", "Disable"}, {KEEP, "", "Secure"}, {0, "", "Disable"}, {0xFFFFFFFE, "", ""},
      {KEEP, OUT_OF_RANGE, "Secure"}, {0, "", "Disable"}, {2, "", "Check"}}},
    {"DiscardTagged", '5', &Port::discardTagged, 0, "Discard Tagged(y/n)(no):", &Vlan_Items::tagged,
     YES_NO_OUTCOMES("False")},
    {"DiscardUntagged", '6', &Port::discardUntagged, 1, "Discard Untagged(y/n)(yes):", &Vlan_Items::untagged,
     YES_NO_OUTCOMES("True")},
    {"EgressMode", '7', &Port::egressMode, 3,
     "Egress Mode(0(Unmodify egress)/1(Untagged egress)/2(Tagged egress)/3(Add tag))(Add tag):",
     &Vlan_Items::egress,
     {{2, "", "Tagged egress"}, {0, "", "Unmodify egress"}, {KEEP, "", "Add tag"}, {0, "", "Unmodify egress"},
      {0xFFFFFFFE, "", ""}, {KEEP, OUT_OF_RANGE, "Add tag"}, {0, "", "Unmodify egress"}, {2, "", "Tagged egress"}}},
    {"UseCoreTag", '8', &Port::useCoreTag, 1, "Use Core Tag(y/n)(yes):", &Vlan_Items::core, YES_NO_OUTCOMES("True")},
    {"EgressRate", '9', &Port::egressRate, 12, "Egress Rate" RATE_CHOICES "(256M bits/sec):", &Vlan_Items::rate,
     {{2, "", "256K bits/sec"}, {0, "", "Not limited"}, {KEEP, "", "256M bits/sec"}, {0, "", "Not limited"},
      {0xFFFFFFFE, "", ""}, {KEEP, OUT_OF_RANGE, "256M bits/sec"}, {0, "", "Not limited"},
      {2, "", "256K bits/sec"}}},
};
// clang-format on

class VlanMenuSetting : public VlanMenu,
                        public testing::WithParamInterface<std::tuple<Set_Key, size_t>>
{
};

TEST_P(VlanMenuSetting, GivesTheAnswerToEveryPortOfTheRange)
{
    const auto &[key, place] = GetParam();
    const Answer &answer = ANSWERS[place];
    const Outcome &outcome = key.outcomes[place];
    lan().*key.field = key.before;
    running_.ports[4].*key.field = 9;

    Vlan_Items after = both_ports();
    after.*key.items = std::string(" LAN:") + outcome.item + " WAN:" + outcome.item;
    const bool overLong = std::string(answer.name) == "OverLongIsTheNextKey";
    EXPECT_EQ(vlan(std::string(1, key.key) + "\n1-2\n" + answer.typed + "0\n"),
              MENU + "Ports Range(0):" + key.prompt + outcome.message + vlan_menu(after) +
                  (overLong ? vlan_menu(after) : ""));

    const uint32_t wanted = outcome.value == KEEP ? key.before : outcome.value;
    EXPECT_EQ(lan().*key.field, wanted);
    EXPECT_EQ(wan().*key.field, wanted);
    EXPECT_EQ(running_.ports[4].*key.field, 9U);
}

INSTANTIATE_TEST_SUITE_P(Keys, VlanMenuSetting,
                         testing::Combine(testing::ValuesIn(SET_KEYS),
                                          testing::Range(size_t{0}, std::size(ANSWERS))),
                         [](const auto &row) {
                             return std::string(std::get<0>(row.param).name) + "_" +
                                    ANSWERS[std::get<1>(row.param)].name;
                         });

/* Key 2: a VID, checked by the menu. */
struct Vid_Answer {
    const char *name;
    const char *typed;
    bool refused;
    uint16_t vid; /* stored or refused */
    const char *items;
};

void PrintTo(const Vid_Answer &answer, std::ostream *out)
{
    *out << answer.name;
}

// clang-format off
const Vid_Answer VID_ANSWERS[] = {
    {"Good", "20\n", false, 20, " LAN:20 WAN:20"},
    {"ZeroIsAccepted", "0\n", false, 0, " LAN:0 WAN:0"},
    {"Highest", "4095\n", false, 4095, " LAN:4095 WAN:4095"},
    {"AboveTheHighest", "4096\n", true, 4096, " LAN:7 WAN:8"},
    {"Negative", "-1\n", true, 65535, " LAN:7 WAN:8"},
    {"CutTo16BitsBeforeTheCheck", "65546\n", false, 10, " LAN:10 WAN:10"},
    {"EnterCopiesTheFirstPort", "\n", false, 7, " LAN:7 WAN:7"},
    {"Letters", "abc\n", false, 0, " LAN:0 WAN:0"},
};
// clang-format on

class VlanMenuVid : public VlanMenu, public testing::WithParamInterface<Vid_Answer>
{
};

TEST_P(VlanMenuVid, IsStoredUpTo4095)
{
    const Vid_Answer &answer = GetParam();
    lan().vid = 7;
    wan().vid = 8;
    Vlan_Items after = both_ports();
    after.vid = answer.items;
    const std::string message =
        answer.refused ? "VID " + std::to_string(answer.vid) + " out of range\n" : "";
    EXPECT_EQ(vlan(std::string("2\n1-2\n") + answer.typed + "0\n"),
              MENU + "Ports Range(0):Port VID(7):" + message + vlan_menu(after));
    EXPECT_EQ(lan().vid, answer.refused ? 7 : answer.vid);
    EXPECT_EQ(wan().vid, answer.refused ? 8 : answer.vid);
}

INSTANTIATE_TEST_SUITE_P(Answers, VlanMenuVid, testing::ValuesIn(VID_ANSWERS),
                         [](const auto &row) { return std::string(row.param.name); });

constexpr const char *BYTES_PROMPTS = "Ports Range(0):BytesCount. Limit MGMT(y/n)(no):"
                                      "BytesCount. Count IFG(y/n)(yes):"
                                      "BytesCount. Count Pre(y/n)(yes):";

TEST_F(VlanMenu, BytesCountAsksThreeTimesAndStoresAllForEveryPort)
{
    wan().limitMgmt = 5;
    Vlan_Items after = both_ports();
    after.bytes = " LAN:Limit MGMT(True),Count IFG(False),Count Pre(True)"
                  " WAN:Limit MGMT(True),Count IFG(False),Count Pre(True)";
    EXPECT_EQ(vlan("b\n1-2\ny\nn\n\n0\n"), MENU + BYTES_PROMPTS + vlan_menu(after));
    EXPECT_EQ(wan().limitMgmt, 1U);
    EXPECT_EQ(wan().countIfg, 0U);
    EXPECT_EQ(wan().countPre, 1U);
}

TEST_F(VlanMenu, BytesCountTakesUpperCaseAndCopiesTheFirstPortOnEnter)
{
    wan().countIfg = 0;
    wan().countPre = 0;
    EXPECT_EQ(vlan("B\n1-2\n\n\n\n0\n"), MENU + BYTES_PROMPTS + vlan_menu(both_ports()));
    EXPECT_EQ(wan().countIfg, 1U);
    EXPECT_EQ(wan().countPre, 1U);
}

TEST_F(VlanMenu, ShowsAFlagOtherThanOneAsTrueInTheBytesCountLineOnly)
{
    SW_Port_Config &cpu = running_.ports[0];
    cpu.vidForceDefault = cpu.discardTagged = cpu.discardUntagged = cpu.useCoreTag = 2;
    cpu.limitMgmt = cpu.countIfg = cpu.countPre = 2;
    EXPECT_EQ(vlan("0\n"),
              vlan_menu({.bytes = " CPU:Limit MGMT(True),Count IFG(True),Count Pre(True)"}));
}

TEST_F(VlanMenu, ShowsEveryPortOfTheRangeInTheOrderOfTheirNumbers)
{
    for (int port = 0; port < SW_PORTS; port++) {
        running_.ports[port].vid = static_cast<uint16_t>(10 + port);
    }
    const std::string output = vlan("2\n4,0 2-3 1\n4096\n0\n");
    EXPECT_NE(output.find(" (Ports range: 4,0 2-3 1)\n"), std::string::npos);
    EXPECT_NE(output.find("2. Port VID ( CPU:10 LAN:11 WAN:12 SFP0:13 SFP1:14 ) *CFG*\n"),
              std::string::npos);
}

/* The text is the refused one, the ports are those of the last good one. */
TEST_F(VlanMenu, GoesOnWithTheLastGoodRange)
{
    EXPECT_EQ(vlan("2\n9\n0\n"), MENU +
                                     "Ports Range(0):Range_Lexems_To_Vector:426: Range Error\n"
                                     "ERROR: Range_Str_To_Vector(\"9\") - Failed\n" +
                                     vlan_menu({.range = "9"}));
}

TEST_F(VlanMenu, ShowsNoPortWhenItIsEnteredWithABadRange)
{
    SetRangeText(&SW_Ranges.ports, "5");
    EXPECT_EQ(vlan("0\n"), vlan_menu({.range = "5",
                                      .vid = "",
                                      .force = "",
                                      .dot1q = "",
                                      .tagged = "",
                                      .untagged = "",
                                      .egress = "",
                                      .core = "",
                                      .rate = "",
                                      .bytes = ""}));
}

TEST_F(VlanMenu, EnterAtTheForceDefaultPromptCopiesLanToWan)
{
    lan().vidForceDefault = 1;
    vlan("3\n1-2\n\n0\n");
    EXPECT_EQ(wan().vidForceDefault, 1U);
}

TEST_F(VlanMenu, StatusFollowsTheReadAndPrintFlags)
{
    set_flags(0, 1);
    EXPECT_EQ(vlan("p\n0\n"), MENU + VLAN_HEADER ZERO_VLAN_ROWS + MENU);
    set_flags(1, 0);
    EXPECT_EQ(vlan("p\n0\n"), MENU + MENU);
}

} // namespace
