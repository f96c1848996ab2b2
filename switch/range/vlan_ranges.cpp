#include "switch/range/vlan_ranges.h"

#include "switch/config/keywords.h"

#include <algorithm>
#include <cstdio>

namespace
{

/* The buffer and the length of the text in it, always below size unless that is 0. */
struct Range_Text {
    char *buffer;
    size_t size;
    size_t length;
};

Range_Text start_text(char *buffer, size_t size)
{
    if (size > 0) {
        buffer[0] = '\0';
    }
    return {buffer, size, 0};
}

void append_run(Range_Text &text, int first, int last)
{
    if (text.length + 1 >= text.size) {
        return;
    }
    const char *const comma = text.length > 0 ? "," : "";
    char *const end = text.buffer + text.length;
    const size_t room = text.size - text.length;
    const int wanted = first == last ? snprintf(end, room, "%s%d", comma, first)
                                     : snprintf(end, room, "%s%d-%d", comma, first, last);
    text.length += std::min(static_cast<size_t>(wanted), room - 1);
}

/* Appends the runs of VLANs for which qualifies(entry) holds. */
template <class Qualifies>
void append_runs(const SW_Config *config, Range_Text &text, const Qualifies &qualifies)
{
    int vid = 0;
    while (vid < SW_VLANS) {
        const int first = vid;
        while (vid < SW_VLANS && qualifies(config->vlans[vid])) {
            ++vid;
        }
        if (vid > first) {
            append_run(text, first, vid - 1);
        } else {
            ++vid;
        }
    }
}

bool is_defined(const SW_Vlan_Entry &entry)
{
    return entry.defined != 0;
}

} // namespace

void Format_Defined_Vlans(const SW_Config *config, char *buffer, size_t size)
{
    Range_Text text = start_text(buffer, size);
    append_runs(config, text, is_defined);
    if (std::none_of(config->vlans, config->vlans + SW_VLANS, is_defined)) {
        printf("<none>");
    }
}

void Format_Port_Vlans(const SW_Config *config, int chipPort, char *buffer, size_t size)
{
    Range_Text text = start_text(buffer, size);
    if (chipPort < 0 || chipPort >= VLAN_ENTRY_PORTS) {
        return;
    }
    append_runs(config, text, [chipPort](const SW_Vlan_Entry &entry) {
        return is_defined(entry) && entry.vtu.memberTagP[chipPort] != SW_Member_Tag_NONE;
    });
}
