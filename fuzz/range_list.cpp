/* The short range dialect, one-digit numbers, against the plain one. */

#include "fuzz/plain_ranges.h"
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
    if (there.good && twoDigits == end)
        REQUIRE(here.good && here.values == there.values);
}

void require_rules(const char *text, Bounds bounds)
{
    const Plain_Result expected = plain_list(text, bounds.min, bounds.max);
    const Parsed parsed = parse(text, false, bounds);
    REQUIRE(parsed.good == expected.accepted);
    REQUIRE(parsed.printed == expected.line);
    REQUIRE(parsed.good ? parsed.values == expected.values : is_untouched(parsed));
    REQUIRE(are_within(expected.values, bounds));
    REQUIRE(!parsed.good || parsed.values.size() == static_cast<size_t>(parsed.count));
    Parsed silent = parse_silently(text, bounds);
    silent.printed = parsed.printed;
    REQUIRE(silent == parsed);
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
