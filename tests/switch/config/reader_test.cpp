#include "tests/switch/config/reading.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

namespace
{

/* A text, whether it is read without an error, and all lines that it prints. */
struct Lines {
    const char *name;
    const char *text;
    bool good;
    const char *output;
};

void PrintTo(const Lines &lines, std::ostream *out)
{
    *out << lines.name;
}

class ReaderLines : public testing::TestWithParam<Lines>
{
};

TEST_P(ReaderLines, AreThoseOfEachOffendingEntryInOrder)
{
    const Reading reading = read_text(GetParam().text);
    EXPECT_EQ(reading.output, GetParam().output);
    EXPECT_EQ(reading.good, GetParam().good);
}

const Lines LINES[] = {
    {"NothingAtAll", "", true, ""},
    {"UndefinedSection", "[SW_PORT5]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"},
    {"VlanZero", "[SW_VLAN0]\nSID = 7\n", false,
     "ERROR: [1][2]: Section \"SW_VLAN0\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN0] - bad section name\n"},
    {"VlanBeyondTheTable", "[SW_VLAN4096]\nSID = 7\n", false,
     "ERROR: [1][2]: Section \"SW_VLAN4096\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN4096] - bad section name\n"},
    {"SectionNumberThatWouldWrap", "[SW_PORT4294967296]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"SW_PORT4294967296\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT4294967296] - bad section name\n"},
    {"VlanNumberThatWouldWrap", "[SW_VLAN4294967297]\nSID = 7\n", false,
     "ERROR: [1][2]: Section \"SW_VLAN4294967297\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN4294967297] - bad section name\n"},
    {"WordOfAnotherKindAsSection", "[CPU]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"CPU\" - \"CPU\"\n"
     "[1:2][CPU] - bad section name\n"},
    {"KeyAsSection", "[VID]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"VID\" - \"VID\"\n"
     "[1:2][VID] - bad section name\n"},
    {"EndMarkerAsSection", "[LAST]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"LAST\" - \"LAST\"\n"
     "[1:2][LAST] - bad section name\n"},
    {"NumberBehindAPlainSection", "[SW_COMMON1]\nMAX_FRAME_SIZE = 1522\n", false,
     "ERROR: [1][2]: Section \"SW_COMMON1\" - \"UNDEFINED\"\n"
     "[1:2][SW_COMMON1] - bad section name\n"},
    {"NumberInsideASection", "[SW_PORT1x]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"SW_PORT1x\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT1x] - bad section name\n"},
    {"LowerCaseSection", "[sw_port1]\nVID = 7\n", false,
     "ERROR: [1][2]: Section \"sw_port1\" - \"UNDEFINED\"\n"
     "[1:2][sw_port1] - bad section name\n"},
    {"UndefinedSectionWithEachEntry", "[SW_PORT5]\nVID = 7 SID = 8\n", false,
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"},
    {"UndefinedSectionWithoutEntries", "[SW_PORT5]\n[SW_PORT4]\nVID = 7\n", true, ""},
    {"UndefinedSectionAndName", "[SW_PORT5]\nFOO = 7\n", false,
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "ERROR: [2][1][\"SW_PORT5\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"},
    {"UndefinedSectionNameAndValue", "[SW_PORT5]\nFOO = BAR\n", false,
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "ERROR: [2][1][\"SW_PORT5\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "ERROR: [2][7][\"SW_PORT5\"][\"FOO\"]: Value \"BAR\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"},
    {"UndefinedSectionAndValue", "[SW_PORT5]\nVID = BAR\n", false,
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "ERROR: [2][7][\"SW_PORT5\"][\"VID\"]: Value \"BAR\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"},
    {"UnknownName", "[SW_PORT4]\nFOO = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT4] FOO - bad variable name\n"},
    {"ValueWordAsName", "[SW_PORT4]\nNO = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"NO\" - \"NO\"\n"
     "[1:2][SW_PORT4] NO - bad variable name\n"},
    {"SectionWordAsName", "[SW_PORT4]\nSW_PORT = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"SW_PORT\" - \"SW_PORT\"\n"
     "[1:2][SW_PORT4] SW_PORT - bad variable name\n"},
    {"EndMarkerAsName", "[SW_PORT4]\nLAST = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"LAST\" - \"LAST\"\n"
     "[1:2][SW_PORT4] LAST - bad variable name\n"},
    {"UndefinedAsName", "[SW_PORT4]\nUNDEFINED = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"UNDEFINED\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT4] UNDEFINED - bad variable name\n"},
    {"LowerCaseName", "[SW_PORT4]\nvid = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"vid\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT4] vid - bad variable name\n"},
    {"NumberBehindAPlainName", "[SW_PORT4]\nVID1 = 7\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"VID1\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT4] VID1 - bad variable name\n"},
    {"IndexBeyondTheUserPriorities", "[SW_COS_USER_PRIO]\nV8 = 1\n", false,
     "ERROR: [2][1][\"SW_COS_USER_PRIO\"]: Name \"V8\" - \"UNDEFINED\"\n"
     "[1:2][SW_COS_USER_PRIO] V8 - bad variable name\n"},
    {"IndexBeyondTheDscps", "[SW_COS_DSCP]\nV64 = 1\n", false,
     "ERROR: [2][1][\"SW_COS_DSCP\"]: Name \"V64\" - \"UNDEFINED\"\n"
     "[1:2][SW_COS_DSCP] V64 - bad variable name\n"},
    {"IndexThatWouldWrap", "[SW_COS_DSCP]\nV4294967296 = 1\n", false,
     "ERROR: [2][1][\"SW_COS_DSCP\"]: Name \"V4294967296\" - \"UNDEFINED\"\n"
     "[1:2][SW_COS_DSCP] V4294967296 - bad variable name\n"},
    {"IndexBeyondTheChipsPorts", "[SW_VLAN7]\nMEMBER_TAG_P11 = 1\nPORT_STATE_P11 = 1\n", false,
     "ERROR: [2][1][\"SW_VLAN7\"]: Name \"MEMBER_TAG_P11\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN7] MEMBER_TAG_P11 - bad variable name\n"
     "ERROR: [3][1][\"SW_VLAN7\"]: Name \"PORT_STATE_P11\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN7] PORT_STATE_P11 - bad variable name\n"},
    {"IndexedNameInACommonSection", "[SW_COMMON]\nV3 = 1\n", false,
     "ERROR: [2][1][\"SW_COMMON\"]: Name \"V3\" - \"UNDEFINED\"\n"
     "[1:2][SW_COMMON] V3 - bad variable name\n"},
    {"UnknownNameAndValue", "[SW_PORT4]\nFOO = BAR\n", false,
     "ERROR: [2][1][\"SW_PORT4\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "ERROR: [2][7][\"SW_PORT4\"][\"FOO\"]: Value \"BAR\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT4] FOO - bad variable name\n"},
    {"KeyOfAnotherSection", "[SW_PORT0]\nMAX_FRAME_SIZE = 1522\n", false,
     "[1:2][SW_PORT0] MAX_FRAME_SIZE - bad variable name\n"},
    {"ListInAnotherSection",
     "[SW_COMMON]\nVLAN_PORT_LIST = \"1\"\n[SW_VLAN5]\nVLAN_PORT_LIST = \"1\"\n", false,
     "[1:2][SW_COMMON] VLAN_PORT_LIST - bad variable name\n"
     "[3:2][SW_VLAN5] VLAN_PORT_LIST - bad variable name\n"},
    {"IndexedKeyOfAnotherSection", "[SW_PORT0]\nMEMBER_TAG_P3 = 1\n", false,
     "[1:2][SW_PORT0] MEMBER_TAG_P3 - bad variable name\n"},
    {"BareIndexedKeyOfAnotherSection", "[SW_COMMON]\nV = 1\n", false,
     "[1:2][SW_COMMON] V - bad variable name\n"},
    {"KeyOfAnotherSectionAndUnknownValue", "[SW_PORT0]\nSID = BAR\n", false,
     "ERROR: [2][7][\"SW_PORT0\"][\"SID\"]: Value \"BAR\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT0] SID - bad variable name\n"},
    {"NumberWithALetter", "[SW_PORT0]\nVID = 7x\n", false,
     "ERROR: [2][7][\"SW_PORT0\"][\"VID\"]: Value \"7x\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT0] VID = 7x - bad variable value\n"},
    {"LowerCaseFlag", "[SW_PORT0]\nIP_PRIO = yes\n", false,
     "ERROR: [2][11][\"SW_PORT0\"][\"IP_PRIO\"]: Value \"yes\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT0] IP_PRIO = yes - bad variable value\n"},
    {"SectionWordAsValue", "[SW_PORT0]\nVID = SW_PORT\n", false,
     "ERROR: [2][7][\"SW_PORT0\"][\"VID\"]: Value \"SW_PORT\" - \"SW_PORT\"\n"
     "[1:2][SW_PORT0] VID = SW_PORT - bad variable value\n"},
    {"EndMarkerAsValue", "[SW_PORT0]\nEGRESS_RATE = LAST\n", false,
     "ERROR: [2][15][\"SW_PORT0\"][\"EGRESS_RATE\"]: Value \"LAST\" - \"LAST\"\n"
     "[1:2][SW_PORT0] EGRESS_RATE = LAST - bad variable value\n"},
    {"KnownWordThatTheKeyRefuses", "[SW_PORT0]\nPORT_TYPE = NO\n", false,
     "[1:2][SW_PORT0] PORT_TYPE = NO - bad variable value\n"},
    {"NumberThatTheKeyRefuses", "[SW_PORT0]\nPORT_TYPE = 1\n", false,
     "[1:2][SW_PORT0] PORT_TYPE = 1 - bad variable value\n"},
    {"QuotedNumber", "[SW_PORT0]\nVID = \"7\"\n", false,
     "[1:2][SW_PORT0] VID = \"7\" - bad variable value\n"},
    {"BareSectionIsIgnored", "[SW_PORT]\nVID = 7 SID = NO FOO_ = 1\n", false,
     "ERROR: [2][18][\"SW_PORT\"]: Name \"FOO_\" - \"UNDEFINED\"\n"},
    {"BareSectionWithKeysAndValuesIsSilent",
     "[SW_PORT]\nVID = 7 PORT_TYPE = NO MAX_FRAME_SIZE = \"x\" V = 1\n[SW_VLAN]\nSID = YES\n", true,
     ""},
    {"BareSectionWithAnUnknownValue", "[SW_VLAN]\nSID = BAR\n", false,
     "ERROR: [2][7][\"SW_VLAN\"][\"SID\"]: Value \"BAR\" - \"UNDEFINED\"\n"},
    {"BareSectionWithUnknownNameAndValue", "[SW_VLAN]\nFOO = BAR\n", false,
     "ERROR: [2][1][\"SW_VLAN\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "ERROR: [2][7][\"SW_VLAN\"][\"FOO\"]: Value \"BAR\" - \"UNDEFINED\"\n"},
    {"BareKeyIsIgnoredWhateverItsValue",
     "[SW_VLAN7]\nMEMBER_TAG_P = 1 PORT_STATE_P = \"x\"\n[SW_COS_DSCP]\nV = NO\n"
     "[SW_COS_USER_PRIO]\nV = 128K\n",
     true, ""},
    {"BareKeyWithAnUnknownValue", "[SW_VLAN7]\nMEMBER_TAG_P = BAR\n", false,
     "ERROR: [2][16][\"SW_VLAN7\"][\"MEMBER_TAG_P\"]: Value \"BAR\" - \"UNDEFINED\"\n"},
    {"StoringLinesStandAtTheSection", "\n\n  [SW_PORT0]\n\n PORT_TYPE = NO\n", false,
     "[3:4][SW_PORT0] PORT_TYPE = NO - bad variable value\n"},
    {"CarriageReturnAndLineFeedAreTwoLines", "[SW_PORT0]\r\nVID = 1\r\nVID = x\r\n", false,
     "ERROR: [5][7][\"SW_PORT0\"][\"VID\"]: Value \"x\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT0] VID = x - bad variable value\n"},
    {"TabIsOneColumn", "\t[SW_PORT0]\n\t\tVID\t=\tx\n", false,
     "ERROR: [2][9][\"SW_PORT0\"][\"VID\"]: Value \"x\" - \"UNDEFINED\"\n"
     "[1:3][SW_PORT0] VID = x - bad variable value\n"},
    {"PositionBehindPlainPairs",
     "[SW_PORT0]\nPORT_TYPE = CPU AUTO_MODE = SPEED_AUTO_DUPLEX_AUTO\r\nVID = 1 "
     "VID_FORCE_DEFAULT = NO\nDOT1Q_MODE = 5\nFOO = 1\n",
     false,
     "[1:2][SW_PORT0] DOT1Q_MODE = 5 - bad variable value\n"
     "ERROR: [6][1][\"SW_PORT0\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT0] FOO - bad variable name\n"},
    {"EveryOffendingEntryIsNamed",
     "[SW_COMMON]\nMAX_FRAME_SIZE = 1523\nFOO = 1\n[NOWHERE]\nA = 1\n[SW_VLAN5]\nSID = x1\n", false,
     "[1:2][SW_COMMON] MAX_FRAME_SIZE = 1523 - bad variable value\n"
     "ERROR: [3][1][\"SW_COMMON\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "[1:2][SW_COMMON] FOO - bad variable name\n"
     "ERROR: [4][2]: Section \"NOWHERE\" - \"UNDEFINED\"\n"
     "ERROR: [5][1][\"NOWHERE\"]: Name \"A\" - \"UNDEFINED\"\n"
     "[4:2][NOWHERE] - bad section name\n"
     "ERROR: [7][7][\"SW_VLAN5\"][\"SID\"]: Value \"x1\" - \"UNDEFINED\"\n"
     "[6:2][SW_VLAN5] SID = x1 - bad variable value\n"},
    {"SyntaxErrorBehindBadEntriesIsSilent", "[SW_PORT5]\nFOO = BAR\nVID = 1\n=\n", false, ""},
    {"SyntaxErrorAtTheVeryEndIsSilent", "[SW_PORT5]\nFOO = BAR\nVID = 1\nVID =\n", false, ""},
    {"TextBehindItsEndIsNotLookedAt", "[SW_PORT5]\nFOO = 1\n;\n=\n", false,
     "ERROR: [1][2]: Section \"SW_PORT5\" - \"UNDEFINED\"\n"
     "ERROR: [2][1][\"SW_PORT5\"]: Name \"FOO\" - \"UNDEFINED\"\n"
     "[1:2][SW_PORT5] - bad section name\n"},
    {"PerCentSignsEndTheText", "[SW_PORT5]\nFOO = %s%n\n", true, ""},
};

INSTANTIATE_TEST_SUITE_P(Texts, ReaderLines, testing::ValuesIn(LINES),
                         [](const auto &row) { return std::string(row.param.name); });

/* A text that prints nothing, its result, and what it leaves in a cleared record. */
struct Effect {
    const char *name;
    std::string text;
    bool good;
    std::function<void(SW_Config &)> change;
};

void PrintTo(const Effect &effect, std::ostream *out)
{
    *out << effect.name;
}

class ReaderEffect : public testing::TestWithParam<Effect>
{
};

TEST_P(ReaderEffect, IsThisAndNothingElse)
{
    const Reading reading = read_text(GetParam().text);
    EXPECT_EQ(reading.output, "");
    EXPECT_EQ(reading.good, GetParam().good);
    const Record expected = filled_record(0);
    GetParam().change(*expected);
    EXPECT_TRUE(same_bytes(*reading.record, *expected));
}

void nothing(SW_Config &) {}

void define_vlan(SW_Config &config, int id)
{
    config.vlans[id].defined = 1;
    config.vlanEntryCount++;
}

const Effect EFFECTS[] = {
    {"LaterValueIsKept", "[SW_PORT1]\nVID = 7\nVID = 8\n[SW_PORT2]\n[SW_PORT1]\nVID = 9\n", true,
     [](SW_Config &c) { c.ports[1].vid = 9; }},
    {"AnyOrder", "[SW_PORT1]TRAFF_CLASS=3 PORT_TYPE=SFP VID=7 ", true,
     [](SW_Config &c) {
         c.ports[1].portPrio = 3;
         c.ports[1].portType = 3;
         c.ports[1].vid = 7;
     }},
    {"VidIsCutToItsField", "[SW_PORT1]\nVID = 70000\n", true,
     [](SW_Config &c) { c.ports[1].vid = 4464; }},
    {"HugeVidSaturatesFirst", "[SW_PORT1]\nVID = 99999999999\n", true,
     [](SW_Config &c) { c.ports[1].vid = 65535; }},
    {"LeadingZerosInSectionAndIndex", "[SW_PORT04]\nVID = 7\n[SW_COS_DSCP]\nV007 = 2 V0063 = 1\n",
     true,
     [](SW_Config &c) {
         c.ports[4].vid = 7;
         c.cosDscp[7] = 2;
         c.cosDscp[63] = 1;
     }},
    {"LeadingZerosInVlanAndPort", "[SW_VLAN00004095]\nMEMBER_TAG_P010 = 3\n", true,
     [](SW_Config &c) {
         c.vlans[4095].vtu.memberTagP[10] = 3;
         define_vlan(c, 4095);
     }},
    {"VidOfAVlanIsNotPreset", "[SW_VLAN5]\nSID = 1\n", true,
     [](SW_Config &c) {
         c.vlans[5].vtu.sid = 1;
         define_vlan(c, 5);
     }},
    {"VidOfAVlanIsFree", "[SW_VLAN5]\nVLAN_VID = 6\n", true,
     [](SW_Config &c) {
         c.vlans[5].vtu.vid = 6;
         define_vlan(c, 5);
     }},
    {"IgnoredKeysDefineNoVlan", "[SW_VLAN5]\nMEMBER_TAG_P = 1\nPORT_STATE_P = 1\n", true, nothing},
    {"SectionAloneDefinesNoVlan", "[SW_VLAN5]\n", true, nothing},
    {"MinusEndsTheFileSilently",
     "[SW_PORT1]\nVID = 7\nVLAN_PORT_LIST = \"10-20\"\nVLAN_PORT_TYPE = TRUNK\n[SW_PORT2]\nVID = "
     "8\n",
     true, [](SW_Config &c) { c.ports[1].vid = 7; }},
    {"CommaEndsTheFileSilently",
     "[SW_PORT1]\nVID = 7\nVLAN_PORT_LIST = \"10,20\"\nVLAN_PORT_TYPE = TRUNK\n", true,
     [](SW_Config &c) { c.ports[1].vid = 7; }},
    {"CommentFirstReadsNothing", "; ports\n[SW_PORT1]\nVID = 7\n", true, nothing},
    {"LastPlainValueWithoutLineEndIsLost", "[SW_PORT1]\nVID = 7\nTRAFF_CLASS = 3", true,
     [](SW_Config &c) { c.ports[1].vid = 7; }},
    {"LastExpectedValueWithoutLineEndIsLost", "[SW_COS_USER_PRIO]\nV0 = 1 V1 = 2 V2 = 3", true,
     [](SW_Config &c) {
         c.cosUserPrio[0] = 1;
         c.cosUserPrio[1] = 2;
     }},
    {"LastQuotedValueWithoutLineEndIsKept", "[SW_PORT1]\nVLAN_PORT_LIST = \"7\"", true,
     [](SW_Config &c) { c.vlanPortList[1][0] = '7'; }},
    {"SyntaxErrorUndoesAllEntries",
     "[SW_PORT1]\nVID = 7\n[SW_VLAN5]\nSID = 1\n[SW_PORT2]\nVID = 8 = 9\n", false, nothing},
    {"EmptyValueIsASyntaxError", "[SW_PORT1]\nVID = 7\nTRAFF_CLASS =\n", false, nothing},
    {"ExpectedOrderWithBlankLinesAndTabs",
     "[SW_PORT1]\nPORT_TYPE = SFP\n\n\t AUTO_MODE = "
     "SPEED_10_DUPLEX_HALF \r\n VID = 5\t\tVID_FORCE_DEFAULT "
     "= YES\nDOT1Q_MODE\t= SECURE\n",
     true,
     [](SW_Config &c) {
         c.ports[1].portType = 3;
         c.ports[1].autoMode = 11;
         c.ports[1].vid = 5;
         c.ports[1].vidForceDefault = 1;
         c.ports[1].dot1qMode = 3;
     }},
};

INSTANTIATE_TEST_SUITE_P(Texts, ReaderEffect, testing::ValuesIn(EFFECTS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Reader, KeepsWhatTheTextDoesNotName)
{
    const Reading reading = read_text("[SW_PORT1]\nVID = 7\n", 0xFF);
    const Record expected = filled_record(0xFF);
    expected->ports[1].vid = 7;
    expected->vlanEntryCount = 4096; /* every entry that was defined before counts */
    EXPECT_TRUE(reading.good);
    EXPECT_TRUE(same_bytes(*reading.record, *expected));
}

TEST(Reader, BadEntriesLeaveTheGoodOnesStoredAndCounted)
{
    const Reading reading = read_text("[SW_VLAN7]\nSID = 1\nFOO = 1\n[SW_PORT9]\nVID = 1\n"
                                      "[SW_VLAN8]\nVID_POLICY = 7\n[SW_PORT1]\nVID = 7\n");
    const Record expected = filled_record(0);
    expected->vlans[7].vtu.sid = 1;
    expected->vlans[7].defined = 1;
    expected->vlanEntryCount = 1; /* VLAN 8 has no accepted key */
    expected->ports[1].vid = 7;
    EXPECT_FALSE(reading.good);
    EXPECT_TRUE(same_bytes(*reading.record, *expected));
}

TEST(Reader, SyntaxErrorLeavesTheRecordAsItWas)
{
    const Reading reading = read_text("[SW_VLAN7]\nSID = 1\nFOO = 1\n]", 0x5A);
    EXPECT_FALSE(reading.good);
    EXPECT_EQ(reading.output, "");
    EXPECT_TRUE(same_bytes(*reading.record, *filled_record(0x5A)));
}

TEST(Reader, LongNamesArePrintedWhole)
{
    const std::string name(70000, 'A');
    const Reading reading = read_text("[" + name + "]\n" + name + " = " + name + "\n");
    EXPECT_FALSE(reading.good);
    EXPECT_EQ(reading.output,
              "ERROR: [1][2]: Section \"" + name + "\" - \"UNDEFINED\"\n" + "ERROR: [2][1][\"" +
                  name + "\"]: Name \"" + name + "\" - \"UNDEFINED\"\n" + "ERROR: [2][70004][\"" +
                  name + "\"][\"" + name + "\"]: Value \"" + name + "\" - \"UNDEFINED\"\n" +
                  "[1:2][" + name + "] - bad section name\n");
}

} // namespace
