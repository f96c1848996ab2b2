#include "switch/config/keywords.h"

#include <iterator>

namespace
{

/* A number and what is shown for it; the number is checked against the row's place. */
struct Display {
    uint32_t value;
    const char *text;
};

constexpr Display RATES[] = {
    {SW_Rate_NO_LIMIT, "Not limited"}, {SW_Rate_128K, "128K bits/sec"},
    {SW_Rate_256K, "256K bits/sec"},   {SW_Rate_512K, "512K bits/sec"},
    {SW_Rate_1M, "1M bits/sec"},       {SW_Rate_2M, "2M bits/sec"},
    {SW_Rate_4M, "4M bits/sec"},       {SW_Rate_8M, "8M bits/sec"},
    {SW_Rate_16M, "16M bits/sec"},     {SW_Rate_32M, "32M bits/sec"},
    {SW_Rate_64M, "64M bits/sec"},     {SW_Rate_128M, "128M bits/sec"},
    {SW_Rate_256M, "256M bits/sec"},
};

constexpr Display EGRESS_MODES[] = {
    {SW_Egress_Mode_UNMODIFY_EGRESS, "Unmodify egress"},
    {SW_Egress_Mode_UNTAGGED_EGRESS, "Untagged egress"},
    {SW_Egress_Mode_TAGGED_EGRESS, "Tagged egress"},
    {SW_Egress_Mode_ADD_TAG, "Add tag"},
};

constexpr Display DOT1Q_MODES[] = {
    {SW_Dot1q_Mode_DISABLE, "Disable"},
    {SW_Dot1q_Mode_FALLBACK, "Fallback"},
    {SW_Dot1q_Mode_CHECK, "Check"},
    {SW_Dot1q_Mode_SECURE, "Secure"},
};

constexpr Display MEMBER_TAGS[] = {
    {SW_Member_Tag_UNMODIFIED, "Unmodified"},
    {SW_Member_Tag_NONE, "None"},
    {SW_Member_Tag_UNTAGGED, "Untagged"},
    {SW_Member_Tag_TAGGED, "Tagged"},
};

struct Auto_Mode_Texts {
    uint32_t value;
    const char *text;
    const char *speed;
    const char *duplex;
};

constexpr Auto_Mode_Texts AUTO_MODES[] = {
    {SPEED_AUTO_DUPLEX_AUTO, "Auto for both speed and duplex", "Auto", "Auto"},
    {SPEED_1000_DUPLEX_AUTO, "Auto for duplex only and speed 1000Mbps", "1000", "Auto"},
    {SPEED_100_DUPLEX_AUTO, "Auto for duplex only and speed 100Mbps", "100", "Auto"},
    {SPEED_10_DUPLEX_AUTO, "Auto for duplex only and speed 10Mbps", "10", "Auto"},
    {SPEED_AUTO_DUPLEX_FULL, "Auto for speed only and Full duplex", "Auto", "Full"},
    {SPEED_AUTO_DUPLEX_HALF, "Auto for speed only and Half duplex", "Auto", "Half"},
    {SPEED_1000_DUPLEX_FULL, "Speed 1000Mbps and Full duplex", "1000", "Full"},
    {SPEED_1000_DUPLEX_HALF, "Speed 1000Mbps and Half duplex", "1000", "Half"},
    {SPEED_100_DUPLEX_FULL, "Speed 100Mbps and Full duplex", "100", "Full"},
    {SPEED_100_DUPLEX_HALF, "Speed 100Mbps and Half duplex", "100", "Half"},
    {SPEED_10_DUPLEX_FULL, "Speed 10Mbps and Full duplex", "10", "Full"},
    {SPEED_10_DUPLEX_HALF, "Speed 10Mbps and Half duplex", "10", "Half"},
};

template <class Row, size_t Count>
constexpr bool is_complete(const Row (&list)[Count], int count)
{
    for (size_t value = 0; value < Count; value++) {
        if (list[value].value != value) {
            return false;
        }
    }
    return Count == static_cast<size_t>(count);
}
static_assert(is_complete(RATES, SW_RATES));
static_assert(is_complete(EGRESS_MODES, SW_EGRESS_MODES));
static_assert(is_complete(DOT1Q_MODES, SW_DOT1Q_MODES));
static_assert(is_complete(MEMBER_TAGS, SW_MEMBER_TAGS));
static_assert(is_complete(AUTO_MODES, SW_AUTO_MODES));

template <class Row, size_t Count>
const char *text_of(const Row (&list)[Count], uint32_t value, const char *Row::*column,
                    const char *other)
{
    return value < Count ? list[value].*column : other;
}

} // namespace

const char *RateDisplayText(uint32_t rate)
{
    return text_of(RATES, rate, &Display::text, "");
}

const char *EgressModeDisplayText(uint32_t mode)
{
    return text_of(EGRESS_MODES, mode, &Display::text, "");
}

const char *Dot1qModeDisplayText(uint32_t mode)
{
    return text_of(DOT1Q_MODES, mode, &Display::text, "");
}

const char *MemberTagDisplayText(uint32_t tag)
{
    return text_of(MEMBER_TAGS, tag, &Display::text, "");
}

const char *AutoModeDisplayText(uint32_t mode)
{
    return text_of(AUTO_MODES, mode, &Auto_Mode_Texts::text, "");
}

const char *AutoModeSpeedText(uint32_t mode)
{
    return text_of(AUTO_MODES, mode, &Auto_Mode_Texts::speed, "Auto");
}

const char *AutoModeDuplexText(uint32_t mode)
{
    return text_of(AUTO_MODES, mode, &Auto_Mode_Texts::duplex, "Auto");
}

const char *MaxFrameSizeDisplayText(uint32_t size)
{
    return size != 0 ? "1632 Bytes" : "1522 Bytes";
}

const char *TrueFalseText(bool value)
{
    return value ? "True" : "False";
}
