/* The short range dialect, one-digit numbers, against the plain one. */

#include "fuzz/range_parse.h"

namespace
{

Parsed parse(const char *text, bool keep, Bounds bounds)
{
    Parsed parsed;
    parsed.good = Int_Range_To_Int_List(text, &parsed.text, keep, parsed.values, parsed.count,
                                        bounds.min, bounds.max);
    parsed.printed = caughtOutput.take();
    return parsed;
}

Parsed parse_silently(const char *text, Bounds bounds)
{
    Parsed parsed;
    parsed.good =
        Int_Range_To_Int_List_Silent(text, parsed.values, parsed.count, bounds.min, bounds.max);
    return parsed;
}

/* What the long dialect accepts is accepted here, with the same values, when no two digits stand
 * side by side. */
void require_agreement(const char *text, const Parsed &here, Bounds bounds)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char *const end = text + strlen(text);
    const char *const twoDigits =
        std::adjacent_find(text, end, [&](char a, char b) { return isDigit(a) && isDigit(b); });
    Parsed there;
    there.good = Int_Range_To_Int_List2(text, nullptr, false, there.values, there.count, bounds.min,
                                        bounds.max);
    caughtOutput.take();
    if (there.good && twoDigits == end) {
        REQUIRE(here.good && here.values == there.values);
    }
}

void require_rules(const char *text, Bounds bounds)
{
    const Plain_Result expected = plain_list(text, bounds.min, bounds.max);
    const Parsed parsed = require_as_plain(expected, parse, text, bounds);
    Parsed silent = parse_silently(text, bounds);
    silent.printed = parsed.printed;
    REQUIRE(silent == parsed);
    require_agreement(text, parsed, bounds);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    require_within_all_bounds(data, size, require_rules);
    return 0;
}
