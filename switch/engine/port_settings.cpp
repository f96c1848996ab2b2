#include "switch/chip/driver.h"
#include "switch/config/keywords.h"
#include "switch/engine/apply.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace
{

enum class Shown_As { NUMBER, TRUE_FALSE, SPEED_DUPLEX, DOT1Q_MODE, EGRESS_MODE, RATE };

/* One field of the port's configuration as the change log shows it. */
struct Log_Field {
    const char *text;
    uint32_t (*value)(const SW_Port_Config &port);
    Shown_As shownAs;
};

constexpr int MAX_FIELDS = 3;

/* One driver setting of a port: how it is written, what its failure line calls it, and the fields
 * that it carries; fields without a text are not there. */
struct Port_Setting {
    const char *failureText;
    int (*write)(SW_Device *device, uint32_t chipPort, const SW_Port_Config &port);
    Log_Field fields[MAX_FIELDS];
    bool copperOnly;
};

template <auto Field>
uint32_t value_of(const SW_Port_Config &port)
{
    return port.*Field;
}

template <auto Setter, auto Field>
int write_field(SW_Device *device, uint32_t chipPort, const SW_Port_Config &port)
{
    return Setter(device, chipPort, port.*Field);
}

int write_egress_rate(SW_Device *device, uint32_t chipPort, const SW_Port_Config &port)
{
    const SW_Egress_Rate rate = {port.egressRate};
    return swSetEgressRate(device, chipPort, &rate);
}

int write_bytes_count(SW_Device *device, uint32_t chipPort, const SW_Port_Config &port)
{
    const SW_Bytes_Count flags = {port.limitMgmt, port.countIfg, port.countPre};
    return swSetBytesCount(device, chipPort, &flags);
}

template <auto Field>
constexpr Log_Field field(const char *text, Shown_As shownAs)
{
    return {text, value_of<Field>, shownAs};
}

template <auto Setter, auto Field>
constexpr Port_Setting setting(const char *failureText, const char *logText, Shown_As shownAs,
                               bool copperOnly = false)
{
    return {failureText,
            write_field<Setter, Field>,
            {field<Field>(logText, shownAs), {}, {}},
            copperOnly};
}

using Port = SW_Port_Config;
using enum Shown_As;

/* In the order in which they are written. */
// clang-format off
constexpr Port_Setting PORT_SETTINGS[] = {
    setting<swSetPortAutoMode, &Port::autoMode>("Auto Mode", "Auto Mode", SPEED_DUPLEX, true),
    setting<swSetPortVid, &Port::vid>("VID", "VID", NUMBER),
    setting<swSetPortForceDefaultVid, &Port::vidForceDefault>("Force Default VID", "Force Default VID",
                                                              TRUE_FALSE),
    setting<swSetPortDot1qMode, &Port::dot1qMode>("Vlan Dot1q Mode", "VLAN Dot1Q Mode", DOT1Q_MODE),
    setting<swSetDiscardTagged, &Port::discardTagged>("Discard Tagged", "Discard Tagged", TRUE_FALSE),
    setting<swSetDiscardUntagged, &Port::discardUntagged>("Discard Untagged", "Discard Untagged", TRUE_FALSE),
    setting<swSetEgressMode, &Port::egressMode>("Egress Mode", "Egress Mode", EGRESS_MODE),
    setting<swSetUseCoreTag, &Port::useCoreTag>("Use Core Tag", "Use Core Tag", TRUE_FALSE),
    {"Egress Rate", write_egress_rate, {field<&Port::egressRate>("Egress Rate", RATE), {}, {}}, false},
    {"Bytes Count", write_bytes_count, {field<&Port::limitMgmt>("Limit MGMT", TRUE_FALSE),
                                        field<&Port::countIfg>("Count IFG", TRUE_FALSE),
                                        field<&Port::countPre>("Count Pre", TRUE_FALSE)}, false},
    setting<swSetPri0Rate, &Port::pri0Rate>("QOS Pri0Rate", "Pri0Rate", RATE),
    setting<swSetPri1Rate, &Port::pri1Rate>("QOS Pri1Rate", "Pri1Rate", TRUE_FALSE),
    setting<swSetPri2Rate, &Port::pri2Rate>("QOS Pri2Rate", "Pri2Rate", TRUE_FALSE),
    setting<swSetPri3Rate, &Port::pri3Rate>("QOS Pri3Rate", "Pri3Rate", TRUE_FALSE),
    setting<swSetPrioMapRule, &Port::prioMapRule>("QOS PrioMapRule", "PrioMapRule", TRUE_FALSE),
    setting<swSetUseIpPrio, &Port::ipPrio>("QOS IP prio", "IP prio", TRUE_FALSE),
    setting<swSetUseUserPrio, &Port::userPrio>("QOS User prio", "User prio", TRUE_FALSE),
    setting<swSetPortDefaultPrio, &Port::portPrio>("QOS Port prio", "Port prio", NUMBER),
};
// clang-format on

constexpr auto fields_of(const Port_Setting &row)
{
    return std::count_if(std::begin(row.fields), std::end(row.fields),
                         [](const Log_Field &shown) { return shown.text != nullptr; });
}

constexpr bool table_is_whole()
{
    constexpr int fields_behind_the_port_type = 20;
    long fields = 0;
    for (const Port_Setting &row : PORT_SETTINGS) {
        fields += fields_of(row);
    }
    return std::size(PORT_SETTINGS) == 18 && fields == fields_behind_the_port_type;
}
static_assert(table_is_whole());

struct Value_Text {
    char text[40];
};

Value_Text shown(uint32_t value, Shown_As shownAs)
{
    Value_Text result = {};
    const auto put = [&result](const char *text) {
        snprintf(result.text, sizeof result.text, "%s", text);
    };
    switch (shownAs) {
    case NUMBER:
        snprintf(result.text, sizeof result.text, "%u", value);
        break;
    case TRUE_FALSE:
        put(TrueFalseText(value != 0)); /* any number but 0 is true here */
        break;
    case SPEED_DUPLEX:
        snprintf(result.text, sizeof result.text, "Speed %s Duplex %s", AutoModeSpeedText(value),
                 AutoModeDuplexText(value));
        break;
    case DOT1Q_MODE:
        put(Dot1qModeDisplayText(value));
        break;
    case EGRESS_MODE:
        put(EgressModeDisplayText(value));
        break;
    case RATE:
        put(RateDisplayText(value));
        break;
    }
    return result;
}

void log_change(int port, const Log_Field &field, const SW_Port_Config &newPort,
                const SW_Port_Config &oldPort)
{
    const uint32_t new_value = field.value(newPort);
    const uint32_t old_value = field.value(oldPort);
    /* Numbers are compared, not what is shown: "True -> True" is possible and meant. */
    if (new_value != old_value) {
        printf("Switch: Port %d %s: %s -> %s\n", port, field.text,
               shown(old_value, field.shownAs).text, shown(new_value, field.shownAs).text);
    }
}

void log_changes(int port, const Port_Setting &row, const SW_Port_Config &newPort,
                 const SW_Port_Config &oldPort)
{
    for (const Log_Field &field : row.fields) {
        if (field.text != nullptr) {
            log_change(port, field, newPort, oldPort);
        }
    }
}

} // namespace

bool SW_Apply_Port(SW_Control *control, int port, const SW_Port_Config *newPort,
                   const SW_Port_Config *oldPort, bool log)
{
    const auto chip_port = static_cast<uint32_t>(SW_Chip_Ports[port]);
    bool ok = true;
    for (const Port_Setting &row : PORT_SETTINGS) {
        if (row.copperOnly && newPort->portType != SW_Port_Type_COPPER) {
            continue;
        }
        const int status = row.write(control->device, chip_port, *newPort);
        if (status != SW_STATUS_OK) {
            printf("Switch: ...Set Port %s %s! Error:%d\n", SW_Port_Names[port], row.failureText,
                   status);
            ok = false;
        } else if (log) {
            log_changes(port, row, *newPort, *oldPort);
        }
    }
    return ok;
}
