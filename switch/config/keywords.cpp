#include "switch/config/keywords.h"

#include <array>
#include <iterator>

namespace
{

/* An enumerator and its own name, from which the compiler makes both. */
struct Enumerator {
    uint32_t value;
    const char *name;
};
#define ENUMERATOR(name)                                                                           \
    {                                                                                              \
        name, #name                                                                                \
    }

constexpr Enumerator CONFIG_KEYWORDS[] = {
    ENUMERATOR(SW_Config_Keyword_NO),
    ENUMERATOR(SW_Config_Keyword_YES),
    ENUMERATOR(SW_Config_Keyword_1522),
    ENUMERATOR(SW_Config_Keyword_1632),
    ENUMERATOR(SW_Config_Keyword_CPU),
    ENUMERATOR(SW_Config_Keyword_COPPER),
    ENUMERATOR(SW_Config_Keyword_SFP),
    ENUMERATOR(SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO),
    ENUMERATOR(SW_Config_Keyword_SPEED_1000_DUPLEX_AUTO),
    ENUMERATOR(SW_Config_Keyword_SPEED_100_DUPLEX_AUTO),
    ENUMERATOR(SW_Config_Keyword_SPEED_10_DUPLEX_AUTO),
    ENUMERATOR(SW_Config_Keyword_SPEED_AUTO_DUPLEX_FULL),
    ENUMERATOR(SW_Config_Keyword_SPEED_AUTO_DUPLEX_HALF),
    ENUMERATOR(SW_Config_Keyword_SPEED_1000_DUPLEX_FULL),
    ENUMERATOR(SW_Config_Keyword_SPEED_1000_DUPLEX_HALF),
    ENUMERATOR(SW_Config_Keyword_SPEED_100_DUPLEX_FULL),
    ENUMERATOR(SW_Config_Keyword_SPEED_100_DUPLEX_HALF),
    ENUMERATOR(SW_Config_Keyword_SPEED_10_DUPLEX_FULL),
    ENUMERATOR(SW_Config_Keyword_SPEED_10_DUPLEX_HALF),
    ENUMERATOR(SW_Config_Keyword_DISABLE),
    ENUMERATOR(SW_Config_Keyword_FALLBACK),
    ENUMERATOR(SW_Config_Keyword_CHECK),
    ENUMERATOR(SW_Config_Keyword_SECURE),
    ENUMERATOR(SW_Config_Keyword_UNMODIFY_EGRESS),
    ENUMERATOR(SW_Config_Keyword_UNTAGGED_EGRESS),
    ENUMERATOR(SW_Config_Keyword_TAGGED_EGRESS),
    ENUMERATOR(SW_Config_Keyword_ADD_TAG),
    ENUMERATOR(SW_Config_Keyword_NO_LIMIT),
    ENUMERATOR(SW_Config_Keyword_128K),
    ENUMERATOR(SW_Config_Keyword_256K),
    ENUMERATOR(SW_Config_Keyword_512K),
    ENUMERATOR(SW_Config_Keyword_1M),
    ENUMERATOR(SW_Config_Keyword_2M),
    ENUMERATOR(SW_Config_Keyword_4M),
    ENUMERATOR(SW_Config_Keyword_8M),
    ENUMERATOR(SW_Config_Keyword_16M),
    ENUMERATOR(SW_Config_Keyword_32M),
    ENUMERATOR(SW_Config_Keyword_64M),
    ENUMERATOR(SW_Config_Keyword_128M),
    ENUMERATOR(SW_Config_Keyword_256M),
    ENUMERATOR(SW_Config_Keyword_DEFAULT),
    ENUMERATOR(SW_Config_Keyword_ACCESS),
    ENUMERATOR(SW_Config_Keyword_TRUNK),
    ENUMERATOR(SW_Config_Keyword_CUSTOM),
    ENUMERATOR(SW_Config_Keyword_SW_COMMON),
    ENUMERATOR(SW_Config_Keyword_SW_PORT),
    ENUMERATOR(SW_Config_Keyword_SW_VLAN),
    ENUMERATOR(SW_Config_Keyword_SW_COS_USER_PRIO),
    ENUMERATOR(SW_Config_Keyword_SW_COS_DSCP),
    ENUMERATOR(SW_Config_Keyword_MAX_FRAME_SIZE),
    ENUMERATOR(SW_Config_Keyword_PORT_TYPE),
    ENUMERATOR(SW_Config_Keyword_AUTO_MODE),
    ENUMERATOR(SW_Config_Keyword_VID),
    ENUMERATOR(SW_Config_Keyword_VID_FORCE_DEFAULT),
    ENUMERATOR(SW_Config_Keyword_DOT1Q_MODE),
    ENUMERATOR(SW_Config_Keyword_DISCARD_TAGGED),
    ENUMERATOR(SW_Config_Keyword_DISCARD_UNTAGGED),
    ENUMERATOR(SW_Config_Keyword_EGRESS_MODE),
    ENUMERATOR(SW_Config_Keyword_USE_CORE_TAG),
    ENUMERATOR(SW_Config_Keyword_EGRESS_RATE),
    ENUMERATOR(SW_Config_Keyword_LIMIT_MGMT),
    ENUMERATOR(SW_Config_Keyword_COUNT_IFG),
    ENUMERATOR(SW_Config_Keyword_COUNT_PRE),
    ENUMERATOR(SW_Config_Keyword_PRI0RATE),
    ENUMERATOR(SW_Config_Keyword_PRI1RATE),
    ENUMERATOR(SW_Config_Keyword_PRI2RATE),
    ENUMERATOR(SW_Config_Keyword_PRI3RATE),
    ENUMERATOR(SW_Config_Keyword_PRIOMAPRULE),
    ENUMERATOR(SW_Config_Keyword_IP_PRIO),
    ENUMERATOR(SW_Config_Keyword_USER_PRIO),
    ENUMERATOR(SW_Config_Keyword_TRAFF_CLASS),
    ENUMERATOR(SW_Config_Keyword_DBNUM),
    ENUMERATOR(SW_Config_Keyword_VLAN_VID),
    ENUMERATOR(SW_Config_Keyword_VID_PRI_OVERRIDE),
    ENUMERATOR(SW_Config_Keyword_VID_PRIORITY),
    ENUMERATOR(SW_Config_Keyword_SID),
    ENUMERATOR(SW_Config_Keyword_VID_POLICY),
    ENUMERATOR(SW_Config_Keyword_MEMBER_TAG_P),
    ENUMERATOR(SW_Config_Keyword_PORT_STATE_P),
    ENUMERATOR(SW_Config_Keyword_V),
    ENUMERATOR(SW_Config_Keyword_VLAN_PORT_TYPE),
    ENUMERATOR(SW_Config_Keyword_VLAN_PORT_LIST),
    ENUMERATOR(SW_Config_Keyword_LAST),
    ENUMERATOR(SW_Config_Keyword_UNDEFINED),
};

constexpr Enumerator PORT_TYPES[] = {
    ENUMERATOR(SW_Port_Type_NO),  ENUMERATOR(SW_Port_Type_CPU),  ENUMERATOR(SW_Port_Type_COPPER),
    ENUMERATOR(SW_Port_Type_SFP), ENUMERATOR(SW_Port_Type_LAST), ENUMERATOR(SW_Port_Type_UNDEFINED),
};

constexpr Enumerator MAX_FRAME_SIZES[] = {
    ENUMERATOR(SW_Max_Frame_Size_1522),
    ENUMERATOR(SW_Max_Frame_Size_1632),
    ENUMERATOR(SW_Max_Frame_Size_LAST),
    ENUMERATOR(SW_Max_Frame_Size_UNDEFINED),
};

constexpr Enumerator VLAN_PORT_TYPES[] = {
    ENUMERATOR(SW_Vlan_Port_Type_NO),     ENUMERATOR(SW_Vlan_Port_Type_DEFAULT),
    ENUMERATOR(SW_Vlan_Port_Type_ACCESS), ENUMERATOR(SW_Vlan_Port_Type_TRUNK),
    ENUMERATOR(SW_Vlan_Port_Type_CUSTOM), ENUMERATOR(SW_Vlan_Port_Type_LAST),
};
#undef ENUMERATOR

/* The driver's names of the chip modes; behind their prefix they are startup-file words. */
constexpr const char *DOT1Q_DRIVER_NAMES[] = {"GT_DISABLE", "GT_FALLBACK", "GT_CHECK", "GT_SECURE"};
constexpr const char *EGRESS_DRIVER_NAMES[] = {"GT_UNMODIFY_EGRESS", "GT_UNTAGGED_EGRESS",
                                               "GT_TAGGED_EGRESS", "GT_ADD_TAG"};
constexpr const char *RATE_DRIVER_NAMES[] = {
    "GT_NO_LIMIT", "GT_128K", "GT_256K", "GT_512K", "GT_1M",   "GT_2M",  "GT_4M",
    "GT_8M",       "GT_16M",  "GT_32M",  "GT_64M",  "GT_128M", "GT_256M"};

constexpr size_t prefix_length(std::string_view prefix)
{
    return prefix.size();
}
constexpr size_t KEYWORD_PREFIX = prefix_length("SW_Config_Keyword_");
constexpr size_t PORT_TYPE_PREFIX = prefix_length("SW_Port_Type_");
constexpr size_t FRAME_SIZE_PREFIX = prefix_length("SW_Max_Frame_Size_");
constexpr size_t VLAN_PORT_TYPE_PREFIX = prefix_length("SW_Vlan_Port_Type_");
constexpr size_t DRIVER_PREFIX = prefix_length("GT_");
constexpr const char *UNDEFINED = "UNDEFINED";

template <size_t Count>
constexpr bool in_value_order(const Enumerator (&list)[Count], uint32_t last)
{
    for (size_t value = 0; value < Count; value++)
        if (list[value].value != value)
            return false;
    return Count == last + 1;
}
static_assert(in_value_order(CONFIG_KEYWORDS, SW_Config_Keyword_UNDEFINED));
static_assert(in_value_order(PORT_TYPES, SW_Port_Type_UNDEFINED));
static_assert(in_value_order(MAX_FRAME_SIZES, SW_Max_Frame_Size_UNDEFINED));
static_assert(in_value_order(VLAN_PORT_TYPES, SW_Vlan_Port_Type_LAST));

constexpr const char *keyword_text(uint32_t keyword)
{
    return CONFIG_KEYWORDS[keyword].name + KEYWORD_PREFIX;
}

template <size_t Count>
constexpr bool are_words_from(const char *const (&driverNames)[Count], uint32_t first)
{
    for (uint32_t value = 0; value < Count; value++)
        if (std::string_view(driverNames[value] + DRIVER_PREFIX) != keyword_text(first + value))
            return false;
    return true;
}
static_assert(are_words_from(DOT1Q_DRIVER_NAMES, SW_Config_Keyword_DISABLE));
static_assert(are_words_from(EGRESS_DRIVER_NAMES, SW_Config_Keyword_UNMODIFY_EGRESS));
static_assert(are_words_from(RATE_DRIVER_NAMES, SW_Config_Keyword_NO_LIMIT));
static_assert(std::size(DOT1Q_DRIVER_NAMES) == SW_DOT1Q_MODES);
static_assert(std::size(EGRESS_DRIVER_NAMES) == SW_EGRESS_MODES);
static_assert(std::size(RATE_DRIVER_NAMES) == SW_RATES);
static_assert(SW_Config_Keyword_SPEED_10_DUPLEX_HALF - SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO ==
              SPEED_10_DUPLEX_HALF);

/* A perfect hash of the keywords: its multipliers were found by trial, and the table below is
 * complete only if no two keywords share a slot. */
constexpr size_t HASH_SLOTS = 512;

constexpr size_t keyword_hash(const char *text, size_t length)
{
    const auto character = [text](size_t index) {
        return size_t{static_cast<unsigned char>(text[index])};
    };
    const size_t hash = 12 * length + character(length - 1) + 230 * character(length * 3 / 8) +
                        163 * character(length < 4 ? 0 : length - 4);
    return hash % HASH_SLOTS;
}

struct Keyword_Table {
    std::array<uint8_t, HASH_SLOTS> slots;
    std::array<uint8_t, SW_CONFIG_KEYWORDS> lengths;
    bool perfect;
};

constexpr Keyword_Table make_keyword_table()
{
    Keyword_Table table = {};
    table.slots.fill(SW_Config_Keyword_UNDEFINED);
    table.perfect = true;
    for (uint32_t keyword = 0; keyword < SW_Config_Keyword_UNDEFINED; keyword++) {
        const std::string_view text = keyword_text(keyword);
        uint8_t &slot = table.slots[keyword_hash(text.data(), text.size())];
        table.perfect = table.perfect && slot == SW_Config_Keyword_UNDEFINED;
        slot = static_cast<uint8_t>(keyword);
        table.lengths[keyword] = static_cast<uint8_t>(text.size());
    }
    return table;
}

constexpr Keyword_Table KEYWORD_TABLE = make_keyword_table();
static_assert(KEYWORD_TABLE.perfect);

template <size_t Count>
const char *name_or(const Enumerator (&list)[Count], uint32_t value, size_t skip, const char *other)
{
    return value < Count ? list[value].name + skip : other;
}

template <size_t Count>
const char *driver_name(const char *const (&names)[Count], uint32_t value)
{
    return value < Count ? names[value] : "GT_UNDEFINED";
}

/* The word of a mode whose words stand together among the keywords, from first on. */
const char *mode_text(uint32_t first, int count, uint32_t value)
{
    return value < static_cast<uint32_t>(count) ? keyword_text(first + value) : UNDEFINED;
}

uint32_t mode_of(const char *text, uint32_t first, int count, uint32_t other)
{
    const uint32_t value = ConfigKeywordOf(text) - first;
    return value < static_cast<uint32_t>(count) ? value : other;
}

template <size_t Count>
uint32_t value_of(const Enumerator (&list)[Count], size_t skip, const char *text)
{
    for (const Enumerator &enumerator : list)
        if (text != nullptr && std::string_view(enumerator.name + skip) == text)
            return enumerator.value;
    return Count - 1;
}

} // namespace

const char *ConfigKeywordText(uint32_t keyword)
{
    return name_or(CONFIG_KEYWORDS, keyword, KEYWORD_PREFIX, UNDEFINED);
}

const char *ConfigKeywordName(uint32_t keyword)
{
    return name_or(CONFIG_KEYWORDS, keyword, 0, "SW_Config_Keyword_UNDEFINED");
}

const char *PortTypeText(uint32_t type)
{
    return name_or(PORT_TYPES, type, PORT_TYPE_PREFIX, UNDEFINED);
}

const char *PortTypeName(uint32_t type)
{
    return name_or(PORT_TYPES, type, 0, "SW_Port_Type_UNDEFINED");
}

const char *MaxFrameSizeText(uint32_t size)
{
    return name_or(MAX_FRAME_SIZES, size, FRAME_SIZE_PREFIX, UNDEFINED);
}

const char *MaxFrameSizeName(uint32_t size)
{
    return name_or(MAX_FRAME_SIZES, size, 0, "SW_Max_Frame_Size_UNDEFINED");
}

const char *AutoModeText(uint32_t mode)
{
    return mode_text(SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO, SW_AUTO_MODES, mode);
}

const char *AutoModeName(uint32_t mode)
{
    return mode < SW_AUTO_MODES ? AutoModeText(mode) : "SPEED_UNDEFINED";
}

const char *Dot1qModeText(uint32_t mode)
{
    return mode_text(SW_Config_Keyword_DISABLE, SW_DOT1Q_MODES, mode);
}

const char *Dot1qModeDriverName(uint32_t mode)
{
    return driver_name(DOT1Q_DRIVER_NAMES, mode);
}

const char *EgressModeText(uint32_t mode)
{
    return mode_text(SW_Config_Keyword_UNMODIFY_EGRESS, SW_EGRESS_MODES, mode);
}

const char *EgressModeDriverName(uint32_t mode)
{
    return driver_name(EGRESS_DRIVER_NAMES, mode);
}

const char *RateText(uint32_t rate)
{
    return mode_text(SW_Config_Keyword_NO_LIMIT, SW_RATES, rate);
}

const char *RateDriverName(uint32_t rate)
{
    return driver_name(RATE_DRIVER_NAMES, rate);
}

const char *VlanPortTypeText(uint32_t type)
{
    return name_or(VLAN_PORT_TYPES, type, VLAN_PORT_TYPE_PREFIX, UNDEFINED);
}

const char *FlagText(uint32_t flag)
{
    return keyword_text(flag == 1 ? SW_Config_Keyword_YES : SW_Config_Keyword_NO);
}

SW_Config_Keyword ConfigKeywordOf(std::string_view text)
{
    if (text.empty())
        return SW_Config_Keyword_UNDEFINED;
    const uint32_t keyword = KEYWORD_TABLE.slots[keyword_hash(text.data(), text.size())];
    if (text != std::string_view(keyword_text(keyword), KEYWORD_TABLE.lengths[keyword]))
        return SW_Config_Keyword_UNDEFINED;
    return static_cast<SW_Config_Keyword>(keyword);
}

SW_Config_Keyword ConfigKeywordOf(const char *text)
{
    return ConfigKeywordOf(text == nullptr ? std::string_view() : std::string_view(text));
}

SW_Port_Type PortTypeOf(const char *text)
{
    return static_cast<SW_Port_Type>(value_of(PORT_TYPES, PORT_TYPE_PREFIX, text));
}

SW_Max_Frame_Size MaxFrameSizeOf(const char *text)
{
    return static_cast<SW_Max_Frame_Size>(value_of(MAX_FRAME_SIZES, FRAME_SIZE_PREFIX, text));
}

SW_Auto_Mode AutoModeOf(const char *text)
{
    return static_cast<SW_Auto_Mode>(mode_of(text, SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO,
                                             SW_AUTO_MODES, SPEED_10_DUPLEX_HALF));
}

SW_Dot1q_Mode Dot1qModeOf(const char *text)
{
    return static_cast<SW_Dot1q_Mode>(
        mode_of(text, SW_Config_Keyword_DISABLE, SW_DOT1Q_MODES, SW_Dot1q_Mode_DISABLE));
}

SW_Egress_Mode EgressModeOf(const char *text)
{
    return static_cast<SW_Egress_Mode>(mode_of(text, SW_Config_Keyword_UNMODIFY_EGRESS,
                                               SW_EGRESS_MODES, SW_Egress_Mode_UNMODIFY_EGRESS));
}

SW_Rate RateOf(const char *text)
{
    return static_cast<SW_Rate>(
        mode_of(text, SW_Config_Keyword_NO_LIMIT, SW_RATES, SW_Rate_NO_LIMIT));
}
