/* The dialect of VLAN IDs against the plain one, its two stages, and the texts of sets of VLANs. */

#include "fuzz/range_parse.h"
#include "switch/range/vlan_ranges.h"

namespace
{

constexpr int PORT = 3;
constexpr Bounds VLAN_IDS = {1, SW_VLANS - 1};

Parsed parse(const char *text, bool verbose, Bounds bounds)
{
    Parsed parsed;
    parsed.good = Range_Str_To_Vector(text, parsed.values, bounds.min, bounds.max, verbose);
    parsed.printed = caughtOutput.take();
    return parsed;
}

Parsed parse_in_stages(const char *text, Bounds bounds)
{
    Parsed parsed;
    std::vector<Range_Lexem> lexems;
    std::vector<int32_t> values;
    parsed.good = Range_Str_To_Lexems(text, lexems, false) &&
                  Range_Lexems_To_Vector(lexems, values, bounds.min, bounds.max, false) &&
                  !values.empty();
    if (parsed.good) {
        parsed.values = sorted_without_repeats(values);
    }
    return parsed;
}

/* The VLANs as a text, read again; and the start of the text where the buffer is short. */
void require_round_trip(const std::vector<int32_t> &vids)
{
    static SW_Config config;
    static char text[5 * SW_VLANS];
    static char other[sizeof text];
    for (const int32_t vid : vids) {
        config.vlans[vid].defined = 1;
    }
    Format_Defined_Vlans(&config, text, sizeof text);
    Format_Port_Vlans(&config, PORT, other, sizeof other);
    REQUIRE(strcmp(text, other) == 0);
    const Parsed again = parse(text, true, VLAN_IDS);
    REQUIRE(again.good && again.values == vids);
    char cut[20];
    Format_Defined_Vlans(&config, cut, sizeof cut);
    REQUIRE(std::string(text).substr(0, sizeof cut - 1) == cut);
    for (const int32_t vid : vids) {
        config.vlans[vid].defined = 0;
    }
}

void require_rules(const char *text, Bounds bounds)
{
    const Plain_Result expected = plain_vector(text, bounds.min, bounds.max);
    const Parsed parsed = parse(text, true, bounds);
    REQUIRE(parsed.good == expected.accepted);
    REQUIRE(parsed.printed == expected.line);
    REQUIRE(parsed.good ? parsed.values == expected.values : is_untouched(parsed));
    REQUIRE(are_within(expected.values, bounds));
    Parsed silent = parse(text, false, bounds);
    REQUIRE(silent.printed.empty() && parse_in_stages(text, bounds) == silent);
    silent.printed = parsed.printed;
    REQUIRE(silent == parsed);
    if (parsed.good && bounds.min >= VLAN_IDS.min) {
        require_round_trip(parsed.values);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    require_within_all_bounds(data, size, require_rules);
    return 0;
}
