#include "switch/config/keywords.h"

#include "switch/config/decimal.h"
#include "switch/config/keyword_table.h"

namespace
{

// clang-format off
#define ENUMERATOR(name) {name, #name}
// clang-format on

constexpr SW_Enumerator PORT_TYPES[] = {
    ENUMERATOR(SW_Port_Type_NO),  ENUMERATOR(SW_Port_Type_CPU),  ENUMERATOR(SW_Port_Type_COPPER),
    ENUMERATOR(SW_Port_Type_SFP), ENUMERATOR(SW_Port_Type_LAST), ENUMERATOR(SW_Port_Type_UNDEFINED),
};

constexpr SW_Enumerator MAX_FRAME_SIZES[] = {
    ENUMERATOR(SW_Max_Frame_Size_1522),
    ENUMERATOR(SW_Max_Frame_Size_1632),
    ENUMERATOR(SW_Max_Frame_Size_LAST),
    ENUMERATOR(SW_Max_Frame_Size_UNDEFINED),
};

constexpr SW_Enumerator VLAN_PORT_TYPES[] = {
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
constexpr size_t PORT_TYPE_PREFIX = prefix_length("SW_Port_Type_");
constexpr size_t FRAME_SIZE_PREFIX = prefix_length("SW_Max_Frame_Size_");
constexpr size_t VLAN_PORT_TYPE_PREFIX = prefix_length("SW_Vlan_Port_Type_");
constexpr size_t DRIVER_PREFIX = prefix_length("GT_");
constexpr const char *UNDEFINED = "UNDEFINED";

static_assert(IsInValueOrder(PORT_TYPES, SW_Port_Type_UNDEFINED));
static_assert(IsInValueOrder(MAX_FRAME_SIZES, SW_Max_Frame_Size_UNDEFINED));
static_assert(IsInValueOrder(VLAN_PORT_TYPES, SW_Vlan_Port_Type_LAST));

constexpr const char *keyword_text(uint32_t keyword)
{
    return KeywordWord(keyword).data();
}

template <size_t Count>
constexpr bool are_words_from(const char *const (&driverNames)[Count], uint32_t first)
{
    for (uint32_t value = 0; value < Count; value++) {
        if (std::string_view(driverNames[value] + DRIVER_PREFIX) != keyword_text(first + value)) {
            return false;
        }
    }
    return true;
}
static_assert(are_words_from(DOT1Q_DRIVER_NAMES, SW_Config_Keyword_DISABLE));
static_assert(are_words_from(EGRESS_DRIVER_NAMES, SW_Config_Keyword_UNMODIFY_EGRESS));
static_assert(are_words_from(RATE_DRIVER_NAMES, SW_Config_Keyword_NO_LIMIT));
static_assert(std::size(DOT1Q_DRIVER_NAMES) == SW_DOT1Q_MODES);
static_assert(std::size(EGRESS_DRIVER_NAMES) == SW_EGRESS_MODES);
static_assert(std::size(RATE_DRIVER_NAMES) == SW_RATES);
/* A name with a number behind it is never a word as it stands; the reader relies on it. */
constexpr bool no_name_ends_in_digit()
{
    for (uint32_t keyword = 0; keyword < SW_CONFIG_KEYWORDS; keyword++) {
        if (!IsDecimalDigit(KeywordWord(keyword).front()) &&
            IsDecimalDigit(KeywordWord(keyword).back())) {
            return false;
        }
    }
    return true;
}
static_assert(no_name_ends_in_digit());

static_assert(SW_Config_Keyword_SPEED_10_DUPLEX_HALF - SW_Config_Keyword_SPEED_AUTO_DUPLEX_AUTO ==
              SPEED_10_DUPLEX_HALF);

template <size_t Count>
const char *name_or(const SW_Enumerator (&list)[Count], uint32_t value, size_t skip,
                    const char *other)
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
uint32_t value_of(const SW_Enumerator (&list)[Count], size_t skip, const char *text)
{
    for (const SW_Enumerator &enumerator : list) {
        if (text != nullptr && std::string_view(enumerator.name + skip) == text) {
            return enumerator.value;
        }
    }
    return Count - 1;
}

} // namespace

const char *ConfigKeywordText(uint32_t keyword)
{
    return name_or(SW_CONFIG_KEYWORD_LIST, keyword, SW_KEYWORD_PREFIX.size(), UNDEFINED);
}

const char *ConfigKeywordName(uint32_t keyword)
{
    return name_or(SW_CONFIG_KEYWORD_LIST, keyword, 0, "SW_Config_Keyword_UNDEFINED");
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
    return FindKeyword(text);
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
