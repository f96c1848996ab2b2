#pragma once

#include "switch/config/keywords.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string_view>

/*
 * The list of the file's words and its perfect hash, for the sources of this folder; everybody else
 * converts with switch/config/keywords.h.
 */

/* An enumerator and its own name, from which the compiler makes both. */
struct SW_Enumerator {
    uint32_t value;
    const char *name;
};

/* True when a list has every value from 0 to last, each in its place. */
template <size_t Count>
constexpr bool IsInValueOrder(const SW_Enumerator (&list)[Count], uint32_t last)
{
    for (size_t value = 0; value < Count; value++) {
        if (list[value].value != value) {
            return false;
        }
    }
    return Count == last + 1;
}

// clang-format off
#define KEYWORD(word) {SW_Config_Keyword_##word, "SW_Config_Keyword_" #word}
inline constexpr SW_Enumerator SW_CONFIG_KEYWORD_LIST[] = {
    KEYWORD(NO),
    KEYWORD(YES),
    KEYWORD(1522),
    KEYWORD(1632),
    KEYWORD(CPU),
    KEYWORD(COPPER),
    KEYWORD(SFP),
    KEYWORD(SPEED_AUTO_DUPLEX_AUTO),
    KEYWORD(SPEED_1000_DUPLEX_AUTO),
    KEYWORD(SPEED_100_DUPLEX_AUTO),
    KEYWORD(SPEED_10_DUPLEX_AUTO),
    KEYWORD(SPEED_AUTO_DUPLEX_FULL),
    KEYWORD(SPEED_AUTO_DUPLEX_HALF),
    KEYWORD(SPEED_1000_DUPLEX_FULL),
    KEYWORD(SPEED_1000_DUPLEX_HALF),
    KEYWORD(SPEED_100_DUPLEX_FULL),
    KEYWORD(SPEED_100_DUPLEX_HALF),
    KEYWORD(SPEED_10_DUPLEX_FULL),
    KEYWORD(SPEED_10_DUPLEX_HALF),
    KEYWORD(DISABLE),
    KEYWORD(FALLBACK),
    KEYWORD(CHECK),
    KEYWORD(SECURE),
    KEYWORD(UNMODIFY_EGRESS),
    KEYWORD(UNTAGGED_EGRESS),
    KEYWORD(TAGGED_EGRESS),
    KEYWORD(ADD_TAG),
    KEYWORD(NO_LIMIT),
    KEYWORD(128K),
    KEYWORD(256K),
    KEYWORD(512K),
    KEYWORD(1M),
    KEYWORD(2M),
    KEYWORD(4M),
    KEYWORD(8M),
    KEYWORD(16M),
    KEYWORD(32M),
    KEYWORD(64M),
    KEYWORD(128M),
    KEYWORD(256M),
    KEYWORD(DEFAULT),
    KEYWORD(ACCESS),
    KEYWORD(TRUNK),
    KEYWORD(CUSTOM),
    KEYWORD(SW_COMMON),
    KEYWORD(SW_PORT),
    KEYWORD(SW_VLAN),
    KEYWORD(SW_COS_USER_PRIO),
    KEYWORD(SW_COS_DSCP),
    KEYWORD(MAX_FRAME_SIZE),
    KEYWORD(PORT_TYPE),
    KEYWORD(AUTO_MODE),
    KEYWORD(VID),
    KEYWORD(VID_FORCE_DEFAULT),
    KEYWORD(DOT1Q_MODE),
    KEYWORD(DISCARD_TAGGED),
    KEYWORD(DISCARD_UNTAGGED),
    KEYWORD(EGRESS_MODE),
    KEYWORD(USE_CORE_TAG),
    KEYWORD(EGRESS_RATE),
    KEYWORD(LIMIT_MGMT),
    KEYWORD(COUNT_IFG),
    KEYWORD(COUNT_PRE),
    KEYWORD(PRI0RATE),
    KEYWORD(PRI1RATE),
    KEYWORD(PRI2RATE),
    KEYWORD(PRI3RATE),
    KEYWORD(PRIOMAPRULE),
    KEYWORD(IP_PRIO),
    KEYWORD(USER_PRIO),
    KEYWORD(TRAFF_CLASS),
    KEYWORD(DBNUM),
    KEYWORD(VLAN_VID),
    KEYWORD(VID_PRI_OVERRIDE),
    KEYWORD(VID_PRIORITY),
    KEYWORD(SID),
    KEYWORD(VID_POLICY),
    KEYWORD(MEMBER_TAG_P),
    KEYWORD(PORT_STATE_P),
    KEYWORD(V),
    KEYWORD(VLAN_PORT_TYPE),
    KEYWORD(VLAN_PORT_LIST),
    KEYWORD(LAST),
    KEYWORD(UNDEFINED),
};
#undef KEYWORD
// clang-format on
static_assert(IsInValueOrder(SW_CONFIG_KEYWORD_LIST, SW_Config_Keyword_UNDEFINED));

inline constexpr std::string_view SW_KEYWORD_PREFIX = "SW_Config_Keyword_";

/* The word of a keyword, 0 to 83. */
constexpr std::string_view KeywordWord(uint32_t keyword)
{
    return std::string_view(SW_CONFIG_KEYWORD_LIST[keyword].name).substr(SW_KEYWORD_PREFIX.size());
}

/* A perfect hash of the words: its multipliers were found by trial, and the table below is complete
 * only if no two words share a slot. */
inline constexpr size_t SW_KEYWORD_SLOTS = 512;

/* Of a text with at least one character. */
constexpr size_t KeywordHash(std::string_view text)
{
    const size_t length = text.size();
    const auto character = [text](size_t index) {
        return size_t{static_cast<unsigned char>(text[index])};
    };
    const size_t hash = 12 * length + character(length - 1) + 230 * character(length * 3 / 8) +
                        163 * character(length < 4 ? 0 : length - 4);
    return hash % SW_KEYWORD_SLOTS;
}

struct SW_Keyword_Table {
    std::array<uint8_t, SW_KEYWORD_SLOTS> slots; /* hash to keyword, SW_Config_Keyword_UNDEFINED */
    std::array<std::string_view, SW_CONFIG_KEYWORDS> words;
    bool perfect;
};

constexpr SW_Keyword_Table MakeKeywordTable()
{
    SW_Keyword_Table table = {};
    table.slots.fill(SW_Config_Keyword_UNDEFINED);
    table.perfect = true;
    for (uint32_t keyword = 0; keyword < SW_CONFIG_KEYWORDS; keyword++) {
        table.words[keyword] = KeywordWord(keyword);
    }
    for (uint32_t keyword = 0; keyword < SW_Config_Keyword_UNDEFINED; keyword++) {
        uint8_t &slot = table.slots[KeywordHash(table.words[keyword])];
        table.perfect = table.perfect && slot == SW_Config_Keyword_UNDEFINED;
        slot = static_cast<uint8_t>(keyword);
    }
    return table;
}

inline constexpr SW_Keyword_Table SW_KEYWORD_TABLE = MakeKeywordTable();
static_assert(SW_KEYWORD_TABLE.perfect);

/* Whether two texts of the same length begin and end with the same Chunk; that is all of them when
 * they have no more than two. */
template <class Chunk>
bool HaveSameEnds(const char *a, const char *b, size_t length)
{
    Chunk chunks[4];
    memcpy(&chunks[0], a, sizeof(Chunk));
    memcpy(&chunks[1], b, sizeof(Chunk));
    memcpy(&chunks[2], a + length - sizeof(Chunk), sizeof(Chunk));
    memcpy(&chunks[3], b + length - sizeof(Chunk), sizeof(Chunk));
    return chunks[0] == chunks[1] && chunks[2] == chunks[3];
}

/* Equality of texts as short as keywords, without the call that a general comparison makes. */
inline bool IsSameWord(std::string_view a, std::string_view b)
{
    const size_t length = a.size();
    if (length != b.size()) {
        return false;
    }
    if (length > 2 * sizeof(uint64_t)) {
        return a == b;
    }
    if (length >= sizeof(uint64_t)) {
        return HaveSameEnds<uint64_t>(a.data(), b.data(), length);
    }
    if (length >= sizeof(uint32_t)) {
        return HaveSameEnds<uint32_t>(a.data(), b.data(), length);
    }
    return length == 0 ||
           (HaveSameEnds<char>(a.data(), b.data(), length) && a[length / 2] == b[length / 2]);
}

/* The keyword of a text, whole and with upper and lower case apart. */
inline SW_Config_Keyword FindKeyword(std::string_view text)
{
    if (text.empty()) {
        return SW_Config_Keyword_UNDEFINED;
    }
    const uint8_t keyword = SW_KEYWORD_TABLE.slots[KeywordHash(text)];
    return IsSameWord(text, SW_KEYWORD_TABLE.words[keyword])
               ? static_cast<SW_Config_Keyword>(keyword)
               : SW_Config_Keyword_UNDEFINED;
}
