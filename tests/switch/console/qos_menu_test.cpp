#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <string>
#include <tuple>

namespace
{

class QosMenu : public ConsoleSession
{
protected:
    std::string qos(std::string_view typed) { return visit(Qos_Setting_Menu, typed); }
};

/* The keys that only print. */
// clang-format off
const Typed_Row VIEWS[] = {
    {"QosTab", "1\n0\n", QOS_MENU QOS_HEADER FACTORY_QOS_ROWS QOS_MENU},
    {"CosTab", "2\n0\n", QOS_MENU FACTORY_COS_TABLES QOS_MENU},
    {"Status", "p\n0\n", QOS_MENU QOS_HEADER CHIP_QOS_ROWS COS_TITLE FACTORY_COS_TABLES QOS_MENU},
    {"StatusUpperCase", "P\n0\n", QOS_MENU QOS_HEADER CHIP_QOS_ROWS COS_TITLE FACTORY_COS_TABLES QOS_MENU},
    {"Apply", "a\n0\n", QOS_MENU APPLY_OK},
    {"ApplyUpperCase", "A\n0\n", QOS_MENU APPLY_OK},
    {"OnlyTheFirstCharacterCounts", "1x9\n0\n", QOS_MENU QOS_HEADER FACTORY_QOS_ROWS QOS_MENU},
    {"Enter", "\n0\n", QOS_MENU},
    {"EnterTwiceThenAKey", "\n\n2\n0\n", QOS_MENU FACTORY_COS_TABLES QOS_MENU},
    {"CarriageReturn", "\r\n0\n", QOS_MENU QOS_MENU},
    {"UnknownKeys", ":\n?\n@\nE\n_\ne\no\n0\n",
     QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU},
    {"CharactersOutsideTheKeys", " \n-\nq\nz\n~\n\x80\n\xFF\n0\n",
     QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU QOS_MENU},
    {"LeaveWithOtherCharacterBehindZero", "0x\n", QOS_MENU},
    {"LastLineWithoutLineFeed", "1", QOS_MENU QOS_HEADER FACTORY_QOS_ROWS QOS_MENU},
};
// clang-format on

class QosMenuView : public QosMenu, public testing::WithParamInterface<Typed_Row>
{
};

TEST_P(QosMenuView, Shows)
{
    EXPECT_EQ(qos(GetParam().typed), GetParam().shown);
    EXPECT_EQ(force_exit_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Keys, QosMenuView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(QosMenu, TwoZeroesForceTheExit)
{
    EXPECT_EQ(qos("00\n"), QOS_MENU);
    EXPECT_EQ(force_exit_, 1U);
}

TEST_F(QosMenu, StatusFollowsTheReadAndPrintFlags)
{
    set_flags(0, 1);
    EXPECT_EQ(qos("p\n0\n"), QOS_MENU QOS_HEADER ZERO_QOS_ROWS COS_TITLE ZERO_COS_TABLES QOS_MENU);
    set_flags(1, 0);
    EXPECT_EQ(qos("p\n0\n"), QOS_MENU QOS_MENU);
    set_flags(0, 1);
    EXPECT_EQ(qos("p\n0\n"),
              QOS_MENU QOS_HEADER CHIP_QOS_ROWS COS_TITLE FACTORY_COS_TABLES QOS_MENU);
}

/* Keys of a setting for LAN and WAN; LAN holds `before`, WAN something else. */
struct Set_Key {
    const char *name;
    char key;
    uint32_t SW_Port_Config::*field;
    uint32_t before;
    const char *prompt;
    bool yesNo;
};

void PrintTo(const Set_Key &key, std::ostream *out)
{
    *out << key.name;
}

using Port = SW_Port_Config;

// clang-format off
const Set_Key SET_KEYS[] = {
    {"Pri0Rate", '3', &Port::pri0Rate, 4, "Pri0Rate" RATE_CHOICES "(1M bits/sec):", false},
    {"Pri1Rate", '4', &Port::pri1Rate, 1, "Pri1Rate(y/n)(yes):", true},
    {"Pri2Rate", '5', &Port::pri2Rate, 0, "Pri2Rate(y/n)(no):", true},
    {"Pri3Rate", '6', &Port::pri3Rate, 1, "Pri3Rate(y/n)(yes):", true},
    {"PrioMapRule", '7', &Port::prioMapRule, 0, "PrioMapRule(y/n)(no):", true},
    {"IpPrio", '8', &Port::ipPrio, 1, "IP prio(y/n)(yes):", true},
    {"UserPrio", '9', &Port::userPrio, 0, "User prio(y/n)(no):", true},
};

/* An answer, what a rate and what a flag becomes (KEEP: the first port's), and what else shows. */
constexpr uint32_t KEEP = 0x12345678;
struct Answer {
    const char *name;
    const char *typed;
    uint32_t rate;
    uint32_t flag;
    const char *rateMessage;
    const char *after; /* between the answer and the end */
};
const Answer ANSWERS[] = {
    {"Good", "7\n", 7, 0, "", QOS_MENU},
    {"Yes", "yes\n", 0, 1, "", QOS_MENU},
    {"YesUpperCase", "Y\n", 0, 1, "", QOS_MENU},
    {"No", "no\n", 0, 0, "", QOS_MENU},
    {"EnterCopiesTheFirstPort", "\n", KEEP, KEEP, "", QOS_MENU},
    {"Letters", "abc\n", 0, 0, "", QOS_MENU},
    {"Negative", "-3\n", 0xFFFFFFFD, 0, "", QOS_MENU},
    {"TooHigh", "13\n", KEEP, 0, "Value out of range!\n", QOS_MENU},
    {"OverLongIsTheNextKey", "0000000000000000122\n", 12, 0, "", QOS_MENU FACTORY_COS_TABLES QOS_MENU},
    {"EighteenCharactersLeaveAnEnter", "000000000000000012\n", 12, 0, "", QOS_MENU},
};
// clang-format on

void PrintTo(const Answer &answer, std::ostream *out)
{
    *out << answer.name;
}

class QosMenuSetting : public QosMenu,
                       public testing::WithParamInterface<std::tuple<Set_Key, Answer>>
{
};

TEST_P(QosMenuSetting, GivesTheAnswerToEveryPortOfTheRange)
{
    const auto &[key, answer] = GetParam();
    for (SW_Port_Config &port : running_.ports) {
        port.*key.field = 9;
    }
    lan().*key.field = key.before;
    wan().*key.field = 2;

    EXPECT_EQ(qos(std::string(1, key.key) + "\n1-2\n" + answer.typed + "0\n"),
              std::string(QOS_MENU) + "Ports Range(0):" + key.prompt +
                  (key.yesNo ? "" : answer.rateMessage) + answer.after);

    const uint32_t outcome = key.yesNo ? answer.flag : answer.rate;
    const uint32_t wanted = outcome == KEEP ? key.before : outcome;
    EXPECT_EQ(lan().*key.field, wanted);
    EXPECT_EQ(wan().*key.field, wanted);
    EXPECT_EQ(running_.ports[0].*key.field, 9U);
    EXPECT_EQ(running_.ports[3].*key.field, 9U);
}

INSTANTIATE_TEST_SUITE_P(Keys, QosMenuSetting,
                         testing::Combine(testing::ValuesIn(SET_KEYS), testing::ValuesIn(ANSWERS)),
                         [](const auto &row) {
                             return std::string(std::get<0>(row.param).name) + "_" +
                                    std::get<1>(row.param).name;
                         });

/* Keys b, c, d: a byte for each item of a range. */
struct Byte_Key {
    const char *name;
    char key;
    const char *range;       /* typed */
    const char *rangePrompt; /* with its default */
    const char *prompt;
    uint8_t limit;
    uint8_t *(*item)(SW_Config *config, int place); /* the range's first, its last, one beside it */
};

void PrintTo(const Byte_Key &key, std::ostream *out)
{
    *out << key.name;
}

uint8_t *port_prio(SW_Config *config, int place)
{
    constexpr int PORTS[] = {2, 4, 1};
    return &config->ports[PORTS[place]].portPrio;
}

uint8_t *user_prio(SW_Config *config, int place)
{
    constexpr int PRIOS[] = {1, 7, 0};
    return &config->cosUserPrio[PRIOS[place]];
}

uint8_t *dscp(SW_Config *config, int place)
{
    constexpr int DSCPS[] = {1, 63, 0};
    return &config->cosDscp[DSCPS[place]];
}

// clang-format off
const Byte_Key BYTE_KEYS[] = {
    {"PortPrio", 'b', "2-4", "Ports Range(0):", "Port prio(2):", 8, port_prio},
    {"PortPrioUpperCase", 'B', "2-4", "Ports Range(0):", "Port prio(2):", 8, port_prio},
    {"UserPriorityClass", 'c', "1-7", "User priority Range(0):", "Traff_class(2):", 4, user_prio},
    {"UserPriorityClassUpperCase", 'C', "1-7", "User priority Range(0):", "Traff_class(2):", 4, user_prio},
    {"DscpClass", 'd', "1-63", "DCSP Range(0):", "Traff_class(2):", 4, dscp},
    {"DscpClassUpperCase", 'D', "1-63", "DCSP Range(0):", "Traff_class(2):", 4, dscp},
};

struct Byte_Answer {
    const char *name;
    const char *typed;
    uint32_t value; /* before the check; KEEP: the first item's */
};
const Byte_Answer BYTE_ANSWERS[] = {
    {"Good", "3\n", 3},
    {"Zero", "0\n", 0},
    {"EnterCopiesTheFirst", "\n", KEEP},
    {"Letters", "abc\n", 0},
    {"Negative", "-1\n", 255},
    {"LowestThatMayBeTooHigh", "4\n", 4},
    {"Seven", "7\n", 7},
    {"Eight", "8\n", 8},
    {"Nine", "9\n", 9},
    {"CutTo8BitsBeforeTheCheck", "256\n", 0},
    {"CutTo7", "263\n", 7},
    {"CutTo16BitsFirst", "65539\n", 3},
};
// clang-format on

void PrintTo(const Byte_Answer &answer, std::ostream *out)
{
    *out << answer.name;
}

class QosMenuByte : public QosMenu,
                    public testing::WithParamInterface<std::tuple<Byte_Key, Byte_Answer>>
{
};

/* The refusal does not end its line: the next menu text follows. */
TEST_P(QosMenuByte, IsStoredBelowItsLimit)
{
    const auto &[key, answer] = GetParam();
    *key.item(&running_, 0) = 2;
    *key.item(&running_, 1) = 1;
    *key.item(&running_, 2) = 0;
    const uint32_t value = answer.value == KEEP ? 2 : answer.value;
    const bool refused = value >= key.limit;

    const std::string output =
        qos(std::string(1, key.key) + "\n" + key.range + "\n" + answer.typed + "0\n");
    EXPECT_EQ(output, std::string(QOS_MENU) + key.rangePrompt + key.prompt +
                          (refused ? "Value out of range!" : "") + QOS_MENU);
    EXPECT_EQ(*key.item(&running_, 0), refused ? 2 : value);
    EXPECT_EQ(*key.item(&running_, 1), refused ? 1 : value);
    EXPECT_EQ(*key.item(&running_, 2), 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, QosMenuByte,
                         testing::Combine(testing::ValuesIn(BYTE_KEYS),
                                          testing::ValuesIn(BYTE_ANSWERS)),
                         [](const auto &row) {
                             return std::string(std::get<0>(row.param).name) + "_" +
                                    std::get<1>(row.param).name;
                         });

TEST_F(QosMenu, ShowsTheRefusalAndTheNextMenuOnOneLine)
{
    const std::string output = qos("b\n1\n9\n0\n");
    EXPECT_NE(output.find("Port prio(0):Value out of range!\nQOS Tab Setting Menu:\n"),
              std::string::npos);
}

/* A refused range: the parser's line, then the menu's. */
struct Bad_Range {
    const char *name;
    const char *typed;
    std::string shown;
    std::string next; /* the default that the next prompt shows */
};

void PrintTo(const Bad_Range &range, std::ostream *out)
{
    *out << range.name;
}

// clang-format off
const Bad_Range BAD_RANGES[] = {
    {"PortAboveFour", "b\n5\n", "Ports Range(0):Range_Lexems_To_Vector:426: Range Error\n"
     "ERROR: Range_Str_To_Vector(\"5\") - Failed\n", "Ports Range(5):"},
    {"Letters", "3\nabc\n", "Ports Range(0):Range_Str_To_Lexems:325: Parsing Error\n"
     "ERROR: Range_Str_To_Vector(\"abc\") - Failed\n", "Ports Range(abc):"},
    {"Negative", "4\n-1\n", "Ports Range(0):Range_Lexems_To_Vector:438: Parsing Error\n"
     "ERROR: Range_Str_To_Vector(\"-1\") - Failed\n", "Ports Range(-1):"},
    {"UserPriorityAboveSeven", "c\n0-8\n", "User priority Range(0):Range_Lexems_To_Vector:384: Range Error\n"
     "ERROR: Range_Str_To_Vector(\"0-8\") - Failed\n", "User priority Range(0-8):"},
    {"DscpAbove63", "d\n64\n", "DCSP Range(0):Range_Lexems_To_Vector:426: Range Error\n"
     "ERROR: Range_Str_To_Vector(\"64\") - Failed\n", "DCSP Range(64):"},
    {"BlankOnly", "d\n \n", "DCSP Range(0):Range_Str_To_Vector:463: Parsing Error\n"
     "ERROR: Range_Str_To_Vector(\" \") - Failed\n", "DCSP Range( ):"},
};
// clang-format on

class QosMenuBadRange : public QosMenu, public testing::WithParamInterface<Bad_Range>
{
};

TEST_P(QosMenuBadRange, IsReportedAndShownNextTime)
{
    const Bad_Range &range = GetParam();
    const SW_Config before = running_;
    EXPECT_EQ(qos(std::string(range.typed) + "0\n"), QOS_MENU + range.shown + QOS_MENU);
    EXPECT_EQ(std::memcmp(&running_, &before, sizeof before), 0);
    const std::string again = qos(std::string(1, range.typed[0]) + "\n\n0\n");
    EXPECT_NE(again.find(range.next), std::string::npos) << again;
}

INSTANTIATE_TEST_SUITE_P(Ranges, QosMenuBadRange, testing::ValuesIn(BAD_RANGES),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(QosMenu, KeepsARangeForTheNextKeyAndTheNextVisit)
{
    EXPECT_EQ(qos("3\n1,3\n1\n4\n\ny\n0\n"),
              QOS_MENU "Ports Range(0):Pri0Rate" RATE_CHOICES "(Not limited):" QOS_MENU
                       "Ports Range(1,3):Pri1Rate(y/n)(no):" QOS_MENU);
    EXPECT_EQ(running_.ports[3].pri1Rate, 1U);
    EXPECT_EQ(running_.ports[2].pri1Rate, 0U);
    EXPECT_EQ(qos("5\n\nn\n0\n"), QOS_MENU "Ports Range(1,3):Pri2Rate(y/n)(no):" QOS_MENU);
}

} // namespace
