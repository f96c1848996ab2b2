/* The long range dialect against the plain one of the tests. */

#include "fuzz/range_parse.h"
#include "tests/switch/range/plain_list2.h"

namespace
{

Parsed parse(const char *text, bool keep, Bounds bounds)
{
    Parsed parsed;
    parsed.good = Int_Range_To_Int_List2(text, &parsed.text, keep, parsed.values, parsed.count,
                                         bounds.min, bounds.max);
    parsed.printed = caughtOutput.take();
    return parsed;
}

/* What is accepted here and names a number is accepted as VLAN IDs, in order and without repeats.
 */
void require_agreement(const char *text, const Parsed &here, Bounds bounds)
{
    std::vector<int32_t> there;
    if (here.good && !here.values.empty())
        REQUIRE(Range_Str_To_Vector(text, there, bounds.min, bounds.max, true) &&
                there == sorted_without_repeats(here.values));
}

void require_rules(const char *text, Bounds bounds)
{
    const Plain_Result expected = plain_list2(text, bounds.min, bounds.max);
    const Parsed parsed = parse(text, false, bounds);
    REQUIRE(parsed.good == expected.accepted);
    REQUIRE(parsed.printed == expected.line);
    REQUIRE(parsed.good ? parsed.values == expected.values : is_untouched(parsed));
    REQUIRE(!parsed.good || parsed.values.size() == static_cast<size_t>(parsed.count));
    const Parsed kept = parse(text, true, bounds);
    REQUIRE(kept.good == (parsed.good && strlen(text) < SW_RANGE_TEXT_SIZE));
    REQUIRE(kept.printed == parsed.printed);
    REQUIRE(kept.good ? is_remembered(kept, text) && kept.values == parsed.values
                      : is_untouched(kept));
    require_agreement(text, parsed, bounds);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::unique_ptr<char[]> text = terminated(data, size);
    for (const Bounds bounds : BOUNDS)
        require_rules(text.get(), bounds);
    return 0;
}
