#include "switch/console/layouts.h"

#include "switch/chip/driver.h"
#include "switch/config/keywords.h"
#include "switch/console/tables.h"

#include <iterator>
#include <string_view>

namespace
{

template <class Member>
struct Member_Of;

template <class Record, class Value>
struct Member_Of<Value Record::*> {
    using Record_Type = Record;
    using Value_Type = Value;
};

template <auto Field>
using Record_Of = typename Member_Of<decltype(Field)>::Record_Type;

template <auto Field>
uint32_t value_of(const Record_Of<Field> *record)
{
    return record->*Field;
}

template <auto Field, auto Get>
void read_field(SW_Device *device, uint32_t chipPort, Record_Of<Field> *record)
{
    uint32_t value = 0;
    if (Get(device, chipPort, &value) == SW_STATUS_OK) {
        record->*Field = static_cast<typename Member_Of<decltype(Field)>::Value_Type>(value);
    }
}

/* A column of the value in Field. */
template <auto Field>
constexpr SW_Column<Record_Of<Field>> column(const char *format, const char *(*text)(uint32_t))
{
    return {format, text, value_of<Field>, nullptr};
}

/* A column of the value in Field, which the driver operation Get reads. */
template <auto Field, auto Get>
constexpr SW_Column<Record_Of<Field>> column(const char *format, const char *(*text)(uint32_t))
{
    return {format, text, value_of<Field>, read_field<Field, Get>};
}

int get_egress_rate(SW_Device *device, uint32_t chipPort, uint32_t *rate)
{
    SW_Egress_Rate holder = {};
    const int status = swGetEgressRate(device, chipPort, &holder);
    *rate = holder.rate;
    return status;
}

void read_bytes_count(SW_Device *device, uint32_t chipPort, SW_Port_Config *record)
{
    SW_Bytes_Count flags = {};
    if (swGetBytesCount(device, chipPort, &flags) != SW_STATUS_OK) {
        return;
    }
    record->limitMgmt = flags.limitMgmt;
    record->countIfg = flags.countIfg;
    record->countPre = flags.countPre;
}

const char *speed_text(uint32_t speed)
{
    static constexpr const char *TEXTS[] = {"10 Mbps", "100 Mbps", "1000 Mbps", "Unknown"};
    static_assert(std::size(TEXTS) == SW_SPEED_UNKNOWN + 1);
    return speed < std::size(TEXTS) ? TEXTS[speed] : "";
}

using Config = SW_Port_Config;
using Status = SW_Port_Status;
constexpr auto FLAG = SW_Flag_Cell_Text;

// clang-format off
constexpr SW_Column<Config> PORTS_CONFIG_COLUMNS[] = {
    column<&Config::autoMode>(" %-30s\n", AutoModeDisplayText),
};

constexpr SW_Column<Config> VLAN_COLUMNS[] = {
    column<&Config::vid, swGetPortVid>("%4d|", nullptr),
    column<&Config::vidForceDefault, swGetPortForceDefaultVid>("%-8s|", FLAG),
    column<&Config::dot1qMode, swGetPortDot1qMode>("%-10s|", Dot1qModeDisplayText),
    column<&Config::discardTagged, swGetDiscardTagged>("%-7s|", FLAG),
    column<&Config::discardUntagged, swGetDiscardUntagged>("%-8s|", FLAG),
    column<&Config::egressMode, swGetEgressMode>("%-15s|", EgressModeDisplayText),
    column<&Config::useCoreTag, swGetUseCoreTag>("%-8s|", FLAG),
    column<&Config::egressRate, get_egress_rate>("%13s|", RateDisplayText),
    {"%-5s|", FLAG, value_of<&Config::limitMgmt>, read_bytes_count},
    column<&Config::countIfg>("%-5s|", FLAG),
    column<&Config::countPre>("%-5s\n", FLAG),
};

/* Pri0Rate is a rate and Pri1Rate to Pri3Rate are flags: meant. */
constexpr SW_Column<Config> QOS_COLUMNS[] = {
    column<&Config::pri0Rate, swGetPri0Rate>(" %13s |", RateDisplayText),
    column<&Config::pri1Rate, swGetPri1Rate>(" %-8s |", FLAG),
    column<&Config::pri2Rate, swGetPri2Rate>(" %-8s |", FLAG),
    column<&Config::pri3Rate, swGetPri3Rate>(" %-8s |", FLAG),
    column<&Config::prioMapRule, swGetPrioMapRule>(" %-11s |", FLAG),
    column<&Config::ipPrio, swGetUseIpPrio>(" %-7s |", FLAG),
    column<&Config::userPrio, swGetUseUserPrio>(" %-9s |", FLAG),
    column<&Config::portPrio, swGetPortDefaultPrio>("%10d\n", nullptr),
};

constexpr SW_Column<Status> PORTS_STATUS_COLUMNS[] = {
    column<&Status::phyDetected, swGetPhyDetect>(" %-10s |", FLAG),
    column<&Status::speed, swGetSpeedMode>(" %10s |", speed_text),
    column<&Status::fullDuplex, swGetDuplex>(" %-6s |", FLAG),
    column<&Status::linkUp, swGetLinkState>(" %-10s\n", FLAG),
};
// clang-format on

/* Each format takes one value of the kind that its column gives, and only the last ends the row. */
template <class Record, size_t Count>
constexpr bool are_well_formed(const SW_Column<Record> (&columns)[Count])
{
    for (size_t i = 0; i < Count; i++) {
        const std::string_view format = columns[i].format;
        const size_t conversion = format.find('%');
        if (conversion == std::string_view::npos || conversion != format.rfind('%')) {
            return false;
        }
        const size_t kind = format.find_first_not_of("%-0123456789", conversion);
        if (format[kind] != (columns[i].text != nullptr ? 's' : 'd')) {
            return false;
        }
        if ((format.back() == '\n') != (i == Count - 1)) {
            return false;
        }
    }
    return true;
}
static_assert(are_well_formed(PORTS_CONFIG_COLUMNS) && are_well_formed(VLAN_COLUMNS) &&
              are_well_formed(QOS_COLUMNS) && are_well_formed(PORTS_STATUS_COLUMNS));

} // namespace

// clang-format off
constexpr SW_Port_Table<SW_Port_Config> SW_PORTS_CONFIG_TABLE = {
    "===== Ports Config =====\n",
    " Port | Speed Auto Mode\n",
    " %-4s |", PORTS_CONFIG_COLUMNS};

constexpr SW_Port_Table<SW_Port_Config> SW_VLAN_TABLE = {
  "===== VLAN Tab =====\n",
  "Port|Port|Force   |Vlan Dot1q|Discard|Discard |Egress Mode    |Use Core|Egress Rate  |Limit|Count|Count\n"
  "    |VID |Def. VID|Mode      |Tagged |Untagged|               |Tag     |             |MGMT |IFG  |Pre\n",
  "%-4s|", VLAN_COLUMNS};

constexpr SW_Port_Table<SW_Port_Config> SW_QOS_TABLE = {
    "===== QOS Tab =====\n",
    "Port |      Pri0Rate | Pri1Rate | Pri2Rate | Pri3Rate | PrioMapRule | IP prio | User prio | Port prio\n",
    "%-4s |", QOS_COLUMNS};

constexpr SW_Port_Table<SW_Port_Status> SW_PORTS_STATUS_TABLE = {
    "===== Ports Status =====\n",
    " Port | PHY Detect | Speed Mode | Duplex | Link State\n",
    " %-4s |", PORTS_STATUS_COLUMNS};
// clang-format on

void Print_Cos_Pair(int index, int trafficClass)
{
    if (index != 0) {
        std::fputs(index % 8 == 0 ? "\n" : " | ", stdout);
    }
    std::printf("%2d %2d", index, trafficClass);
}
