#pragma once

#include <cstdint>
#include <string_view>

/*
 * The enumerations of the switch configuration and their texts: words of the startup file,
 * enumeration and driver names, and the texts that the engine's log lines and the console's tables
 * show. Texts are static; nothing allocates; any thread may call.
 *
 * Numbers are taken as unsigned: a negative one is outside every list. A text to convert may be
 * null. Texts are compared whole, with upper and lower case apart.
 */

/* Every word of the startup file: value words first, then sections, then keys. */
enum SW_Config_Keyword : uint32_t {
    SW_Config_Keyword_NO,
    SW_Config_Keyword_YES,
    SW_Config_Keyword_1522,
    SW_Config_Keyword_1632,
    SW_Config_Keyword_CPU,
    SW_Config_Keyword_COPPER,
    SW_Config_Keyword_SFP,
    SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO,
    SW_Config_Keyword_SPEED_1000_DUPLEX_AUTO,
    SW_Config_Keyword_SPEED_100_DUPLEX_AUTO,
    SW_Config_Keyword_SPEED_10_DUPLEX_AUTO,
    SW_Config_Keyword_SPEED_AUTO_DUPLEX_FULL,
    SW_Config_Keyword_SPEED_AUTO_DUPLEX_HALF,
    SW_Config_Keyword_SPEED_1000_DUPLEX_FULL,
    SW_Config_Keyword_SPEED_1000_DUPLEX_HALF,
    SW_Config_Keyword_SPEED_100_DUPLEX_FULL,
    SW_Config_Keyword_SPEED_100_DUPLEX_HALF,
    SW_Config_Keyword_SPEED_10_DUPLEX_FULL,
    SW_Config_Keyword_SPEED_10_DUPLEX_HALF,
    SW_Config_Keyword_DISABLE,
    SW_Config_Keyword_FALLBACK,
    SW_Config_Keyword_CHECK,
    SW_Config_Keyword_SECURE,
    SW_Config_Keyword_UNMODIFY_EGRESS,
    SW_Config_Keyword_UNTAGGED_EGRESS,
    SW_Config_Keyword_TAGGED_EGRESS,
    SW_Config_Keyword_ADD_TAG,
    SW_Config_Keyword_NO_LIMIT,
    SW_Config_Keyword_128K,
    SW_Config_Keyword_256K,
    SW_Config_Keyword_512K,
    SW_Config_Keyword_1M,
    SW_Config_Keyword_2M,
    SW_Config_Keyword_4M,
    SW_Config_Keyword_8M,
    SW_Config_Keyword_16M,
    SW_Config_Keyword_32M,
    SW_Config_Keyword_64M,
    SW_Config_Keyword_128M,
    SW_Config_Keyword_256M,
    SW_Config_Keyword_DEFAULT,
    SW_Config_Keyword_ACCESS,
    SW_Config_Keyword_TRUNK,
    SW_Config_Keyword_CUSTOM,
    SW_Config_Keyword_SW_COMMON,
    SW_Config_Keyword_SW_PORT,
    SW_Config_Keyword_SW_VLAN,
    SW_Config_Keyword_SW_COS_USER_PRIO,
    SW_Config_Keyword_SW_COS_DSCP,
    SW_Config_Keyword_MAX_FRAME_SIZE,
    SW_Config_Keyword_PORT_TYPE,
    SW_Config_Keyword_AUTO_MODE,
    SW_Config_Keyword_VID,
    SW_Config_Keyword_VID_FORCE_DEFAULT,
    SW_Config_Keyword_DOT1Q_MODE,
    SW_Config_Keyword_DISCARD_TAGGED,
    SW_Config_Keyword_DISCARD_UNTAGGED,
    SW_Config_Keyword_EGRESS_MODE,
    SW_Config_Keyword_USE_CORE_TAG,
    SW_Config_Keyword_EGRESS_RATE,
    SW_Config_Keyword_LIMIT_MGMT,
    SW_Config_Keyword_COUNT_IFG,
    SW_Config_Keyword_COUNT_PRE,
    SW_Config_Keyword_PRI0RATE,
    SW_Config_Keyword_PRI1RATE,
    SW_Config_Keyword_PRI2RATE,
    SW_Config_Keyword_PRI3RATE,
    SW_Config_Keyword_PRIOMAPRULE,
    SW_Config_Keyword_IP_PRIO,
    SW_Config_Keyword_USER_PRIO,
    SW_Config_Keyword_TRAFF_CLASS,
    SW_Config_Keyword_DBNUM,
    SW_Config_Keyword_VLAN_VID,
    SW_Config_Keyword_VID_PRI_OVERRIDE,
    SW_Config_Keyword_VID_PRIORITY,
    SW_Config_Keyword_SID,
    SW_Config_Keyword_VID_POLICY,
    SW_Config_Keyword_MEMBER_TAG_P,
    SW_Config_Keyword_PORT_STATE_P,
    SW_Config_Keyword_V,
    SW_Config_Keyword_VLAN_PORT_TYPE,
    SW_Config_Keyword_VLAN_PORT_LIST,
    SW_Config_Keyword_LAST,
    SW_Config_Keyword_UNDEFINED
};

enum SW_Port_Type : uint32_t {
    SW_Port_Type_NO,
    SW_Port_Type_CPU,
    SW_Port_Type_COPPER,
    SW_Port_Type_SFP,
    SW_Port_Type_LAST,
    SW_Port_Type_UNDEFINED
};

/* Largest frame in bytes (IEEE 802.3, 3.2.7: 1522 is the limit for a tagged frame). */
enum SW_Max_Frame_Size : uint32_t {
    SW_Max_Frame_Size_1522,
    SW_Max_Frame_Size_1632,
    SW_Max_Frame_Size_LAST,
    SW_Max_Frame_Size_UNDEFINED
};

/* Autonegotiation mode of a port's PHY (IEEE 802.3, clause 28); numbers as the chip driver's. */
enum SW_Auto_Mode : uint32_t {
    SPEED_AUTO_DUPLEX_AUTO,
    SPEED_1000_DUPLEX_AUTO,
    SPEED_100_DUPLEX_AUTO,
    SPEED_10_DUPLEX_AUTO,
    SPEED_AUTO_DUPLEX_FULL,
    SPEED_AUTO_DUPLEX_HALF,
    SPEED_1000_DUPLEX_FULL,
    SPEED_1000_DUPLEX_HALF,
    SPEED_100_DUPLEX_FULL,
    SPEED_100_DUPLEX_HALF,
    SPEED_10_DUPLEX_FULL,
    SPEED_10_DUPLEX_HALF
};

/* IEEE 802.1Q handling of a port's ingress frames; numbers as the chip driver's. */
enum SW_Dot1q_Mode : uint32_t {
    SW_Dot1q_Mode_DISABLE,
    SW_Dot1q_Mode_FALLBACK,
    SW_Dot1q_Mode_CHECK,
    SW_Dot1q_Mode_SECURE
};

enum SW_Egress_Mode : uint32_t {
    SW_Egress_Mode_UNMODIFY_EGRESS,
    SW_Egress_Mode_UNTAGGED_EGRESS,
    SW_Egress_Mode_TAGGED_EGRESS,
    SW_Egress_Mode_ADD_TAG
};

/* Rate limit in bits per second, of egress and of ingress frames with priority 0. */
enum SW_Rate : uint32_t {
    SW_Rate_NO_LIMIT,
    SW_Rate_128K,
    SW_Rate_256K,
    SW_Rate_512K,
    SW_Rate_1M,
    SW_Rate_2M,
    SW_Rate_4M,
    SW_Rate_8M,
    SW_Rate_16M,
    SW_Rate_32M,
    SW_Rate_64M,
    SW_Rate_128M,
    SW_Rate_256M
};

enum SW_Vlan_Port_Type : uint32_t {
    SW_Vlan_Port_Type_NO,
    SW_Vlan_Port_Type_DEFAULT,
    SW_Vlan_Port_Type_ACCESS,
    SW_Vlan_Port_Type_TRUNK,
    SW_Vlan_Port_Type_CUSTOM,
    SW_Vlan_Port_Type_LAST
};

/* Membership of a chip port in a VLAN, and what becomes of the tag at egress. */
enum SW_Member_Tag : uint32_t {
    SW_Member_Tag_UNMODIFIED,
    SW_Member_Tag_NONE,
    SW_Member_Tag_UNTAGGED,
    SW_Member_Tag_TAGGED
};

inline constexpr int SW_CONFIG_KEYWORDS = SW_Config_Keyword_UNDEFINED + 1;
inline constexpr int SW_AUTO_MODES = SPEED_10_DUPLEX_HALF + 1;
inline constexpr int SW_DOT1Q_MODES = SW_Dot1q_Mode_SECURE + 1;
inline constexpr int SW_EGRESS_MODES = SW_Egress_Mode_ADD_TAG + 1;
inline constexpr int SW_RATES = SW_Rate_256M + 1;
inline constexpr int SW_MEMBER_TAGS = SW_Member_Tag_TAGGED + 1;

/*
 * Text of a number. The first of each pair is the word of the startup file and gives "UNDEFINED"
 * outside the enumeration; the name routines give the enumerator's whole name, the driver name
 * routines the chip driver's, and outside the enumeration the text that stands beside them.
 */
const char *ConfigKeywordText(uint32_t keyword);
const char *ConfigKeywordName(uint32_t keyword); /* "SW_Config_Keyword_UNDEFINED" */
const char *PortTypeText(uint32_t type);
const char *PortTypeName(uint32_t type); /* "SW_Port_Type_UNDEFINED" */
const char *MaxFrameSizeText(uint32_t size);
const char *MaxFrameSizeName(uint32_t size); /* "SW_Max_Frame_Size_UNDEFINED" */
const char *AutoModeText(uint32_t mode);
const char *AutoModeName(uint32_t mode); /* "SPEED_UNDEFINED" */
const char *Dot1qModeText(uint32_t mode);
const char *Dot1qModeDriverName(uint32_t mode); /* "GT_UNDEFINED" */
const char *EgressModeText(uint32_t mode);
const char *EgressModeDriverName(uint32_t mode); /* "GT_UNDEFINED" */
const char *RateText(uint32_t rate);
const char *RateDriverName(uint32_t rate); /* "GT_UNDEFINED" */
const char *VlanPortTypeText(uint32_t type);
const char *FlagText(uint32_t flag); /* "YES" for 1, "NO" for any other value */

/*
 * Number of a startup-file word. What an unknown, empty or missing text gives differs on purpose:
 * the UNDEFINED member of its enumeration for the first three, the last mode for an auto mode, and
 * 0 for the chip's modes and rates. A keyword is found at a cost that does not depend on how many
 * there are.
 */
SW_Config_Keyword ConfigKeywordOf(std::string_view text);
SW_Config_Keyword ConfigKeywordOf(const char *text); /* SW_Config_Keyword_UNDEFINED */
SW_Port_Type PortTypeOf(const char *text);           /* SW_Port_Type_UNDEFINED */
SW_Max_Frame_Size MaxFrameSizeOf(const char *text);  /* SW_Max_Frame_Size_UNDEFINED */
SW_Auto_Mode AutoModeOf(const char *text);           /* SPEED_10_DUPLEX_HALF */
SW_Dot1q_Mode Dot1qModeOf(const char *text);         /* SW_Dot1q_Mode_DISABLE */
SW_Egress_Mode EgressModeOf(const char *text);       /* SW_Egress_Mode_UNMODIFY_EGRESS */
SW_Rate RateOf(const char *text);                    /* SW_Rate_NO_LIMIT */

/*
 * Texts that log lines and tables show; "" for a number outside the enumeration unless said
 * otherwise. The longest has 39 characters.
 */
const char *RateDisplayText(uint32_t rate);
const char *EgressModeDisplayText(uint32_t mode);
const char *Dot1qModeDisplayText(uint32_t mode);
const char *MemberTagDisplayText(uint32_t tag);
const char *AutoModeDisplayText(uint32_t mode);
const char *AutoModeSpeedText(uint32_t mode);       /* "Auto" for a mode that fixes no speed */
const char *AutoModeDuplexText(uint32_t mode);      /* "Auto" for a mode that fixes no duplex */
const char *MaxFrameSizeDisplayText(uint32_t size); /* 0 is 1522 bytes, any other number 1632 */
const char *TrueFalseText(bool value);
