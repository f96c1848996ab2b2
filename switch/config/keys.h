#pragma once

#include "switch/config/keywords.h"
#include "switch/config/model.h"

#include <array>
#include <cstddef>
#include <iterator>

/*
 * Every key of the startup file, in the order of the written file: the one table that reader and
 * writer walk. docs/startup-file.md is its description for people; a new key is a row here and a
 * line there.
 */

/* Values of an enumerated field: the words that the reader accepts stand together among the
 * keywords and mean firstValue and up; the writer's text has a word for every number. */
struct SW_Value_Words {
    SW_Config_Keyword first;
    SW_Config_Keyword last;
    uint32_t firstValue;
    bool alsoNo; /* the word NO means 0 */
    const char *(*text)(uint32_t);
};

inline constexpr SW_Value_Words SW_FLAG_WORDS = {SW_Config_Keyword_NO, SW_Config_Keyword_YES, 0,
                                                 false, FlagText};
inline constexpr SW_Value_Words SW_FRAME_SIZE_WORDS = {
    SW_Config_Keyword_1522, SW_Config_Keyword_1632, SW_Max_Frame_Size_1522, false,
    MaxFrameSizeText};
/* Meant: a port of type NO is written, and refused when read. */
inline constexpr SW_Value_Words SW_PORT_TYPE_WORDS = {SW_Config_Keyword_CPU, SW_Config_Keyword_SFP,
                                                      SW_Port_Type_CPU, false, PortTypeText};
inline constexpr SW_Value_Words SW_AUTO_MODE_WORDS = {SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO,
                                                      SW_Config_Keyword_SPEED_10_DUPLEX_HALF,
                                                      SPEED_AUTO_DUPLEX_AUTO, false, AutoModeText};
inline constexpr SW_Value_Words SW_DOT1Q_WORDS = {SW_Config_Keyword_DISABLE,
                                                  SW_Config_Keyword_SECURE, SW_Dot1q_Mode_DISABLE,
                                                  false, Dot1qModeText};
inline constexpr SW_Value_Words SW_EGRESS_WORDS = {
    SW_Config_Keyword_UNMODIFY_EGRESS, SW_Config_Keyword_ADD_TAG, SW_Egress_Mode_UNMODIFY_EGRESS,
    false, EgressModeText};
inline constexpr SW_Value_Words SW_RATE_WORDS = {SW_Config_Keyword_NO_LIMIT, SW_Config_Keyword_256M,
                                                 SW_Rate_NO_LIMIT, false, RateText};
inline constexpr SW_Value_Words SW_VLAN_PORT_TYPE_WORDS = {
    SW_Config_Keyword_DEFAULT, SW_Config_Keyword_CUSTOM, SW_Vlan_Port_Type_DEFAULT, true,
    VlanPortTypeText};

/* A section is one header, or one for each number from firstNumber on. */
struct SW_Config_Section {
    SW_Config_Keyword keyword;
    int32_t firstNumber;
    int32_t numbers; /* 0: not numbered */
};

inline constexpr SW_Config_Section SW_CONFIG_SECTIONS[] = {
    {SW_Config_Keyword_SW_COMMON, 0, 0},          {SW_Config_Keyword_SW_PORT, 0, SW_PORTS},
    {SW_Config_Keyword_SW_VLAN, 1, SW_VLANS - 1}, {SW_Config_Keyword_SW_COS_USER_PRIO, 0, 0},
    {SW_Config_Keyword_SW_COS_DSCP, 0, 0},
};
inline constexpr size_t SW_CONFIG_SECTION_COUNT = std::size(SW_CONFIG_SECTIONS);

enum class SW_Value_Kind : uint8_t { WORD, NUMBER, LIST };

struct SW_Config_Key {
    SW_Config_Keyword section;
    SW_Config_Keyword keyword;
    const SW_Value_Words *words; /* of a WORD, else null */
    /* Field in SW_Config: of section number 0 and index 0, from one section number to the next, and
     * its own bytes. */
    uint32_t offset;
    uint32_t stride;
    uint32_t size;
    SW_Value_Kind kind;
    uint8_t indexes; /* 0: plain key; else the key is followed by an index below this */
    uint8_t perLine; /* indexes that the writer puts on one line */
    bool endsLine;   /* the writer ends the line behind a plain key */
};

// clang-format off
#define COMMON(field) offsetof(SW_Config, field), 0, sizeof(SW_Config::field)
#define PORT(field)                                                                                \
    offsetof(SW_Config, ports) + offsetof(SW_Port_Config, field), sizeof(SW_Port_Config),          \
        sizeof(SW_Port_Config::field)
#define PORT_MODE(field)                                                                           \
    offsetof(SW_Config, field), sizeof(SW_Config::field[0]), sizeof(SW_Config::field[0])
#define VLAN(field)                                                                                \
    offsetof(SW_Config, vlans) + offsetof(SW_Vlan_Entry, vtu) + offsetof(Vlan_Table_Entry, field), \
        sizeof(SW_Vlan_Entry), sizeof(Vlan_Table_Entry::field)
#define VLAN_PORTS(field)                                                                          \
    offsetof(SW_Config, vlans) + offsetof(SW_Vlan_Entry, vtu) + offsetof(Vlan_Table_Entry, field), \
        sizeof(SW_Vlan_Entry), sizeof(Vlan_Table_Entry::field[0])
#define COS(field) offsetof(SW_Config, field), 0, sizeof(SW_Config::field[0])
#define KEY(section, name) SW_Config_Keyword_##section, SW_Config_Keyword_##name
#define KIND(kind) SW_Value_Kind::kind

inline constexpr SW_Config_Key SW_CONFIG_KEYS[] = {
    {KEY(SW_COMMON, MAX_FRAME_SIZE), &SW_FRAME_SIZE_WORDS, COMMON(maxFrameSize), KIND(WORD), 0, 0, true},

    {KEY(SW_PORT, PORT_TYPE), &SW_PORT_TYPE_WORDS, PORT(portType), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, AUTO_MODE), &SW_AUTO_MODE_WORDS, PORT(autoMode), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, VID), nullptr, PORT(vid), KIND(NUMBER), 0, 0, false},
    {KEY(SW_PORT, VID_FORCE_DEFAULT), &SW_FLAG_WORDS, PORT(vidForceDefault), KIND(WORD), 0, 0, true},
    {KEY(SW_PORT, DOT1Q_MODE), &SW_DOT1Q_WORDS, PORT(dot1qMode), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, DISCARD_TAGGED), &SW_FLAG_WORDS, PORT(discardTagged), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, DISCARD_UNTAGGED), &SW_FLAG_WORDS, PORT(discardUntagged), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, EGRESS_MODE), &SW_EGRESS_WORDS, PORT(egressMode), KIND(WORD), 0, 0, true},
    {KEY(SW_PORT, USE_CORE_TAG), &SW_FLAG_WORDS, PORT(useCoreTag), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, EGRESS_RATE), &SW_RATE_WORDS, PORT(egressRate), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, LIMIT_MGMT), &SW_FLAG_WORDS, PORT(limitMgmt), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, COUNT_IFG), &SW_FLAG_WORDS, PORT(countIfg), KIND(WORD), 0, 0, true},
    {KEY(SW_PORT, COUNT_PRE), &SW_FLAG_WORDS, PORT(countPre), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, PRI0RATE), &SW_RATE_WORDS, PORT(pri0Rate), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, PRI1RATE), &SW_FLAG_WORDS, PORT(pri1Rate), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, PRI2RATE), &SW_FLAG_WORDS, PORT(pri2Rate), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, PRI3RATE), &SW_FLAG_WORDS, PORT(pri3Rate), KIND(WORD), 0, 0, true},
    {KEY(SW_PORT, PRIOMAPRULE), &SW_FLAG_WORDS, PORT(prioMapRule), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, IP_PRIO), &SW_FLAG_WORDS, PORT(ipPrio), KIND(WORD), 0, 0, false},
    {KEY(SW_PORT, USER_PRIO), &SW_FLAG_WORDS, PORT(userPrio), KIND(WORD), 0, 0, false},
    /* Meant: the port's priority goes by the name of its traffic class. */
    {KEY(SW_PORT, TRAFF_CLASS), nullptr, PORT(portPrio), KIND(NUMBER), 0, 0, true},
    /* Meant: the list stands before the type, although their keywords are the other way round. */
    {KEY(SW_PORT, VLAN_PORT_LIST), nullptr, PORT_MODE(vlanPortList), KIND(LIST), 0, 0, true},
    {KEY(SW_PORT, VLAN_PORT_TYPE), &SW_VLAN_PORT_TYPE_WORDS, PORT_MODE(vlanPortType), KIND(WORD), 0, 0, true},

    {KEY(SW_VLAN, DBNUM), nullptr, VLAN(dbNum), KIND(NUMBER), 0, 0, false},
    {KEY(SW_VLAN, VLAN_VID), nullptr, VLAN(vid), KIND(NUMBER), 0, 0, false},
    {KEY(SW_VLAN, VID_PRI_OVERRIDE), &SW_FLAG_WORDS, VLAN(vidPriOverride), KIND(WORD), 0, 0, false},
    {KEY(SW_VLAN, VID_PRIORITY), nullptr, VLAN(vidPriority), KIND(NUMBER), 0, 0, false},
    {KEY(SW_VLAN, SID), nullptr, VLAN(sid), KIND(NUMBER), 0, 0, false},
    {KEY(SW_VLAN, VID_POLICY), &SW_FLAG_WORDS, VLAN(vidPolicy), KIND(WORD), 0, 0, true},
    {KEY(SW_VLAN, MEMBER_TAG_P), nullptr, VLAN_PORTS(memberTagP), KIND(NUMBER), VLAN_ENTRY_PORTS, VLAN_ENTRY_PORTS, true},
    {KEY(SW_VLAN, PORT_STATE_P), nullptr, VLAN_PORTS(portStateP), KIND(NUMBER), VLAN_ENTRY_PORTS, VLAN_ENTRY_PORTS, true},

    {KEY(SW_COS_USER_PRIO, V), nullptr, COS(cosUserPrio), KIND(NUMBER), SW_USER_PRIOS, 8, true},
    {KEY(SW_COS_DSCP, V), nullptr, COS(cosDscp), KIND(NUMBER), SW_DSCPS, 8, true},
};
#undef COMMON
#undef PORT
#undef PORT_MODE
#undef VLAN
#undef VLAN_PORTS
#undef COS
#undef KEY
#undef KIND
// clang-format on

inline constexpr size_t SW_CONFIG_KEY_COUNT = std::size(SW_CONFIG_KEYS);

/* Keywords of an entry are signed; one that is not converted lies in no range. */
constexpr bool IsKeywordBetween(int32_t keyword, uint32_t first, uint32_t last)
{
    const uint32_t number = static_cast<uint32_t>(keyword);
    return number >= first && number <= last;
}

constexpr bool IsSectionKeyword(int32_t keyword)
{
    return IsKeywordBetween(keyword, SW_Config_Keyword_SW_COMMON, SW_Config_Keyword_SW_COS_DSCP);
}

constexpr bool IsKeyKeyword(int32_t keyword)
{
    return IsKeywordBetween(keyword, SW_Config_Keyword_MAX_FRAME_SIZE,
                            SW_Config_Keyword_VLAN_PORT_LIST);
}

/* Places of section and key keywords in tables that begin with the first of them. */
constexpr size_t SectionPlace(uint32_t section)
{
    return section - SW_Config_Keyword_SW_COMMON;
}

constexpr size_t KeyPlace(uint32_t key)
{
    return key - SW_Config_Keyword_MAX_FRAME_SIZE;
}
