#include "tests/switch/config/reading.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace
{

/* A text with a pair that follows another one of its section, all lines that the text gives,
 * whether it is read without an error, and what it leaves in a cleared record. */
struct Following {
    const char *name;
    const char *text;
    bool good;
    const char *output;
    void (*change)(SW_Config &);
};

void PrintTo(const Following &following, std::ostream *out)
{
    *out << following.name;
}

class PlainPair : public testing::TestWithParam<Following>
{
};

/* A pair is taken as a plain one only where the longest key could still follow. */
const std::string REST(100, '\n');

TEST_P(PlainPair, IsReadLikeAnyOther)
{
    const Reading reading = read_text(GetParam().text + REST);
    EXPECT_EQ(reading.output, GetParam().output);
    EXPECT_EQ(reading.good, GetParam().good);
    const Record expected = filled_record(0);
    GetParam().change(*expected);
    EXPECT_TRUE(same_bytes(*reading.record, *expected));
}

void nothing(SW_Config &) {}

void first_dscp(SW_Config &config)
{
    config.cosDscp[0] = 1;
}

void two_dscps(SW_Config &config)
{
    config.cosDscp[0] = 1;
    config.cosDscp[1] = 2;
}

const Following FOLLOWING[] = {
    {"AsSaved", "[SW_COS_DSCP]\n V0 = 1 V1 = 2\n", true, "", two_dscps},
    {"WithoutBlanks", "[SW_COS_DSCP]V0=1 V1=2\n", true, "", two_dscps},
    {"WithMoreBlanks", "[SW_COS_DSCP]\nV0 = 1\t \r\n\n V1\t =\t 2\t\n", true, "", two_dscps},
    {"OnCarriageReturnLines", "[SW_COS_DSCP]\rV0 = 1\rV1 = 2\r", true, "", two_dscps},
    {"NumberThatSaturates", "[SW_COS_DSCP]\nV0 = 1 V1 = 4294967298\n", true, "",
     [](SW_Config &c) {
         c.cosDscp[0] = 1;
         c.cosDscp[1] = 255;
     }},
    {"NumberWithLeadingZeros", "[SW_COS_DSCP]\nV0 = 1 V1 = 00000000000002\n", true, "", two_dscps},
    {"IndexWithLeadingZero", "[SW_COS_DSCP]\nV0 = 1 V01 = 2\n", true, "", two_dscps},
    {"LongerIndex", "[SW_COS_DSCP]\nV0 = 1 V10 = 2\n", true, "",
     [](SW_Config &c) {
         c.cosDscp[0] = 1;
         c.cosDscp[10] = 2;
     }},
    {"LongerKey", "[SW_PORT1]\nAUTO_MODE = SPEED_AUTO_DUPLEX_AUTO VID_FORCE_DEFAULT = YES\n", true,
     "", [](SW_Config &c) { c.ports[1].vidForceDefault = 1; }},
    {"KeyAndALetter", "[SW_COS_DSCP]\nV0 = 1 V1_ = 2\n", false,
     "ERROR: [2][8][\"SW_COS_DSCP\"]: Name \"V1_\" - \"UNDEFINED\"\n"
     "[1:2][SW_COS_DSCP] V1_ - bad variable name\n",
     first_dscp},
    {"NumberAndALetter", "[SW_COS_DSCP]\nV0 = 1 V1 = 2x\n", false,
     "ERROR: [2][13][\"SW_COS_DSCP\"][\"V1\"]: Value \"2x\" - \"UNDEFINED\"\n"
     "[1:2][SW_COS_DSCP] V1 = 2x - bad variable value\n",
     first_dscp},
    {"WordForANumber", "[SW_COS_DSCP]\nV0 = 1 V1 = YES\n", false,
     "[1:2][SW_COS_DSCP] V1 = YES - bad variable value\n", first_dscp},
    {"QuotedNumber", "[SW_COS_DSCP]\nV0 = 1 V1 = \"2\"\n", false,
     "[1:2][SW_COS_DSCP] V1 = \"2\" - bad variable value\n", first_dscp},
    {"WordOfAnotherKind", "[SW_PORT1]\nIP_PRIO = YES USER_PRIO = TRUNK\n", false,
     "[1:2][SW_PORT1] USER_PRIO = TRUNK - bad variable value\n",
     [](SW_Config &c) { c.ports[1].ipPrio = 1; }},
    {"LineEndBeforeEquals", "[SW_COS_DSCP]\nV0 = 1 V1\n= 2\n", false, "", nothing},
    {"LineEndBehindEquals", "[SW_COS_DSCP]\nV0 = 1 V1 =\n2\n", false, "", nothing},
    {"TwoEquals", "[SW_COS_DSCP]\nV0 = 1 V1 == 2\n", false, "", nothing},
    {"NoEquals", "[SW_COS_DSCP]\nV0 = 1 V1 2\n", false, "", nothing},
    {"BracketBehindANumber", "[SW_COS_DSCP]\nV0 = 1 V1 = 2[SW_COMMON]\n", false, "", nothing},
    {"QuoteBehindAWord", "[SW_PORT1]\nIP_PRIO = YES USER_PRIO = YES\"\n", false, "", nothing},
    {"EndBehindANumber", "[SW_COS_DSCP]\nV0 = 1 V1 = 2;\nV2 = 3\n", true, "", first_dscp},
    {"EndBehindAWord", "[SW_PORT1]\nIP_PRIO = YES USER_PRIO = YES;\nTRAFF_CLASS = 3\n", true, "",
     [](SW_Config &c) { c.ports[1].ipPrio = 1; }},
    {"PortKeyInTheCommonSection", "[SW_COMMON]\nMAX_FRAME_SIZE = 1632 PORT_TYPE = CPU\n", false,
     "[1:2][SW_COMMON] PORT_TYPE - bad variable name\n", [](SW_Config &c) { c.maxFrameSize = 1; }},
    {"VlanKeyInAPortSection", "[SW_PORT1]\nVLAN_PORT_TYPE = TRUNK DBNUM = 1\n", false,
     "[1:2][SW_PORT1] DBNUM - bad variable name\n", [](SW_Config &c) { c.vlanPortType[1] = 3; }},
    {"ClassKeyInAVlanSection", "[SW_VLAN5]\nPORT_STATE_P10 = 1 V0 = 1\n", false,
     "ERROR: [2][20][\"SW_VLAN5\"]: Name \"V0\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN5] V0 - bad variable name\n",
     [](SW_Config &c) {
         c.vlans[5].vtu.portStateP[10] = 1;
         c.vlans[5].defined = 1;
         c.vlanEntryCount = 1;
     }},
    {"FirstIndexBehindTheLast", "[SW_COS_USER_PRIO]\nV7 = 3 V0 = 2\n", true, "",
     [](SW_Config &c) {
         c.cosUserPrio[7] = 3;
         c.cosUserPrio[0] = 2;
     }},
    {"BehindQuotes", "[SW_PORT1]\nVLAN_PORT_LIST = \"7\"VLAN_PORT_TYPE = TRUNK\n", true, "",
     [](SW_Config &c) {
         c.vlanPortList[1][0] = '7';
         c.vlanPortType[1] = 3;
     }},
    {"InAnotherOrder", "[SW_COS_DSCP]\nV9 = 9 V63 = 63 V0 = 1\nV10 = 10", true, "",
     [](SW_Config &c) {
         c.cosDscp[9] = 9;
         c.cosDscp[63] = 63;
         c.cosDscp[0] = 1;
         c.cosDscp[10] = 10;
     }},
    {"WordInAnotherOrder", "[SW_PORT1]\nUSER_PRIO = YES IP_PRIO = YES\n", true, "",
     [](SW_Config &c) { c.ports[1].userPrio = c.ports[1].ipPrio = 1; }},
    {"ListInAnotherOrder", "[SW_PORT1]\nVLAN_PORT_TYPE = TRUNK VLAN_PORT_LIST = \"7\"\n", true, "",
     [](SW_Config &c) {
         c.vlanPortList[1][0] = '7';
         c.vlanPortType[1] = 3;
     }},
    {"LeadingZeroInAnotherOrder", "[SW_COS_DSCP]\nV9 = 1 V07 = 2 V0 = 3\n", true, "",
     [](SW_Config &c) {
         c.cosDscp[9] = 1;
         c.cosDscp[7] = 2;
         c.cosDscp[0] = 3;
     }},
    {"IndexMissing", "[SW_COS_DSCP]\nV9 = 1 V = 2 V0 = 1\n", true, "",
     [](SW_Config &c) { c.cosDscp[9] = c.cosDscp[0] = 1; }},
    {"IndexTooHigh", "[SW_COS_DSCP]\nV9 = 1 V64 = 2\n", false,
     "ERROR: [2][8][\"SW_COS_DSCP\"]: Name \"V64\" - \"UNDEFINED\"\n"
     "[1:2][SW_COS_DSCP] V64 - bad variable name\n",
     [](SW_Config &c) { c.cosDscp[9] = 1; }},
    {"AlmostAnotherKey", "[SW_VLAN5]\nSID = 1 XEMBER_TAG_P3 = 1\n", false,
     "ERROR: [2][9][\"SW_VLAN5\"]: Name \"XEMBER_TAG_P3\" - \"UNDEFINED\"\n"
     "[1:2][SW_VLAN5] XEMBER_TAG_P3 - bad variable name\n",
     [](SW_Config &c) {
         c.vlans[5].vtu.sid = 1;
         c.vlans[5].defined = 1;
         c.vlanEntryCount = 1;
     }},
    {"KeyWithoutLetters", "[SW_COS_DSCP]\nV9 = 1 9 = 2\n", false, "", nothing},
    {"ThenSyntaxError", "[SW_COS_DSCP]\nV0 = 1 V1 = 2 V2 = 3\n]\n", false, "", nothing},
};

INSTANTIATE_TEST_SUITE_P(Texts, PlainPair, testing::ValuesIn(FOLLOWING),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
