/* The long range dialect against the plain one of the tests. */

#include "fuzz/range_parse.h"

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
    if (here.good && !here.values.empty()) {
        REQUIRE(Range_Str_To_Vector(text, there, bounds.min, bounds.max, true) &&
                there == sorted_without_repeats(here.values));
    }
}

void require_rules(const char *text, Bounds bounds)
{
    const Plain_Result expected = plain_list2(text, bounds.min, bounds.max);
    const Parsed parsed = require_as_plain(expected, parse, text, bounds);
    require_agreement(text, parsed, bounds);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    require_within_all_bounds(data, size, require_rules);
    return 0;
}
