#include "switch/chip/vlan_table.h"

#include "switch/chip/checks.h"
#include "switch/chip/families.h"
#include "switch/chip/fields.h"
#include "switch/chip/lock.h"
#include "switch/chip/smi.h"

namespace
{

constexpr uint8_t OPERATION_REGISTER = 5;
constexpr uint8_t VID_REGISTER = 6;
constexpr uint8_t DATA_REGISTER = 7;
constexpr uint32_t DATA_REGISTERS = 3;
constexpr uint32_t PORTS_PER_REGISTER = 4;
constexpr uint16_t BUSY = 0x8000;
constexpr uint16_t VALID = 0x1000;
constexpr uint16_t VID_MASK = 0x0FFF;
constexpr uint16_t LAST_VID = 4095;
constexpr uint32_t OPERATION_FIRST_BIT = 12;
/* On chips with few ports the last data register holds the priority override instead of ports. */
constexpr uint32_t FEW_PORTS = 8;
constexpr uint16_t MOST_DATABASES = 63;
constexpr uint16_t MOST_DATABASES_OLDEST = 15;

constexpr Family_Test PORT_STATES = {Family_Compare::ANY, A_VLAN_PORT_STATE, B_GROUP, 0};

enum Operation : uint16_t { FLUSH = 1, LOAD = 3, GET_NEXT = 4 };

struct Data_Words {
    uint16_t word[DATA_REGISTERS];
};

bool has_override_word(const SW_Device &device)
{
    return device.numberOfPorts < FEW_PORTS && Family_Passes(FAMILY_NEWER_LAYOUT, device);
}

uint16_t put(uint32_t value, uint32_t first_bit, uint32_t length)
{
    return static_cast<uint16_t>((value & ((1U << length) - 1)) << first_bit);
}

uint8_t take(uint16_t word, uint32_t first_bit, uint32_t length)
{
    return static_cast<uint8_t>((word >> first_bit) & ((1U << length) - 1));
}

uint16_t pack_override(uint32_t flag, uint8_t priority)
{
    return flag == 1 ? put(1, 15, 1) | put(priority, 12, 3) : 0;
}

uint16_t pack_extended(const Vlan_Table_Entry &entry)
{
    const uint16_t first = pack_override(entry.extPriOverride, entry.extPriority);
    const uint16_t second =
        entry.extSecondOverride == 1 ? put(1, 11, 1) | put(entry.extSecondPriority, 9, 2) : 0;
    return first | second | put(entry.extRateLimit == 1 ? 1 : 0, 8, 1);
}

void unpack_extended(uint16_t word, Vlan_Table_Entry *entry)
{
    entry->extPriOverride = take(word, 15, 1);
    entry->extPriority = take(word, 12, 3);
    entry->extSecondOverride = take(word, 11, 1);
    entry->extSecondPriority = take(word, 9, 2);
    entry->extRateLimit = take(word, 8, 1);
}

/* Ports of the chip that an entry has a slot for. */
uint32_t entry_ports(const SW_Device &device)
{
    return device.numberOfPorts < VLAN_ENTRY_PORTS ? device.numberOfPorts : VLAN_ENTRY_PORTS;
}

/* Where a driver port's four bits are in the data registers. */
struct Slot {
    uint32_t word;
    uint32_t tagBit;
    uint32_t stateBit;
};

Slot slot_of(const SW_Device &device, uint32_t port)
{
    const uint32_t hardware_port = SMI_Hardware_Port(device, port);
    const uint32_t bit = PORTS_PER_REGISTER * (hardware_port % PORTS_PER_REGISTER);
    return {hardware_port / PORTS_PER_REGISTER, bit, bit + 2};
}

Data_Words pack(const SW_Device &device, const Vlan_Table_Entry &entry)
{
    Data_Words data = {};
    const bool states = Family_Passes(PORT_STATES, device);
    for (uint32_t port = 0; port < entry_ports(device); ++port) {
        const Slot slot = slot_of(device, port);
        data.word[slot.word] |= put(entry.memberTagP[port], slot.tagBit, 2);
        data.word[slot.word] |= put(states ? entry.portStateP[port] : 0, slot.stateBit, 2);
    }
    if (Family_Passes(FAMILY_EXTENDED, device)) {
        data.word[1] |= pack_extended(entry);
    }
    if (has_override_word(device)) {
        data.word[2] = pack_override(entry.vidPriOverride, entry.vidPriority);
    }
    return data;
}

Vlan_Table_Entry unpack(const SW_Device &device, const Data_Words &data)
{
    Vlan_Table_Entry entry = {};
    const bool states = Family_Passes(PORT_STATES, device);
    for (uint32_t port = 0; port < entry_ports(device); ++port) {
        const Slot slot = slot_of(device, port);
        entry.memberTagP[port] = take(data.word[slot.word], slot.tagBit, 2);
        entry.portStateP[port] = states ? take(data.word[slot.word], slot.stateBit, 2) : 0;
    }
    if (Family_Passes(FAMILY_EXTENDED, device)) {
        unpack_extended(data.word[1], &entry);
    }
    if (has_override_word(device)) {
        entry.vidPriOverride = take(data.word[2], 15, 1);
        entry.vidPriority = take(data.word[2], 12, 3);
    }
    return entry;
}

/* The low four bits of the database number stand in bits 0 to 3, two more, where there are more
 * than sixteen, in bits 8 and 9. */
uint16_t pack_database(uint16_t number)
{
    return put(number, 0, 4) | put(number >> 4U, 8, 2);
}

uint16_t unpack_database(const SW_Device &device, uint16_t operation)
{
    const unsigned more = Family_Passes(FAMILY_NOT_OLDEST, device) ? take(operation, 8, 2) : 0;
    return static_cast<uint16_t>(take(operation, 0, 4) | more << 4U);
}

bool entry_is_in_range(const SW_Device &device, const Vlan_Table_Entry &entry)
{
    return entry.vid <= LAST_VID &&
           entry.dbNum <=
               (Family_Passes(FAMILY_NOT_OLDEST, device) ? MOST_DATABASES : MOST_DATABASES_OLDEST);
}

int read_global(SW_Device *device, uint32_t number, uint16_t *value)
{
    return Register_Read(device, SMI_Address(*device, 0, SMI_GLOBAL), static_cast<uint8_t>(number),
                         value);
}

int write_global(SW_Device *device, uint32_t number, uint16_t value)
{
    return Register_Write(device, SMI_Address(*device, 0, SMI_GLOBAL), static_cast<uint8_t>(number),
                          value);
}

/* No limit to this wait, meant: only a failed read ends it while the chip is busy. */
int wait_until_idle(SW_Device *device, uint16_t *operation)
{
    int status = SW_STATUS_OK;
    do {
        status = read_global(device, OPERATION_REGISTER, operation);
    } while (status == SW_STATUS_OK && (*operation & BUSY) != 0);
    return status;
}

int write_entry(SW_Device *device, const Vlan_Table_Entry &entry)
{
    const Data_Words data = pack(*device, entry);
    int status = write_global(device, VID_REGISTER, VALID | entry.vid);
    for (uint32_t k = 0; status == SW_STATUS_OK && k < DATA_REGISTERS; ++k) {
        status = write_global(device, DATA_REGISTER + k, data.word[k]);
    }
    return status;
}

/* Reads what get-next found; `valid` is false when there is no entry. */
int read_entry(SW_Device *device, Vlan_Table_Entry *entry, bool *valid)
{
    uint16_t operation = 0;
    uint16_t vid = 0;
    Data_Words data = {};
    int status = wait_until_idle(device, &operation);
    if (status == SW_STATUS_OK) {
        status = read_global(device, VID_REGISTER, &vid);
    }
    for (uint32_t k = 0; status == SW_STATUS_OK && k < DATA_REGISTERS; ++k) {
        status = read_global(device, DATA_REGISTER + k, &data.word[k]);
    }
    if (status == SW_STATUS_OK) {
        *entry = unpack(*device, data);
        entry->vid = vid & VID_MASK;
        entry->dbNum = unpack_database(*device, operation);
        *valid = (vid & VALID) != 0;
    }
    return status;
}

/* The routine behind all operations. `entry`: for a load the entry, for get-next the start VLAN ID
 * and then the result, together with `valid`; changed only when the whole operation succeeded. */
int run_operation(SW_Device *device, Operation operation, Vlan_Table_Entry *entry, bool *valid)
{
    const Held_Lock lock(device, SW_LOCK_VTU);
    if (!lock.taken()) {
        return SW_STATUS_FAIL;
    }
    uint16_t command = 0;
    int status = wait_until_idle(device, &command);
    command = static_cast<uint16_t>(BUSY | operation << OPERATION_FIRST_BIT);
    if (status == SW_STATUS_OK && operation == LOAD) {
        command |= pack_database(entry->dbNum);
        status = write_entry(device, *entry);
    }
    if (status == SW_STATUS_OK && operation == GET_NEXT) {
        status = write_global(device, VID_REGISTER, entry->vid & VID_MASK);
    }
    if (status == SW_STATUS_OK) {
        status = write_global(device, OPERATION_REGISTER, command);
    }
    return status == SW_STATUS_OK && operation == GET_NEXT ? read_entry(device, entry, valid)
                                                           : status;
}

/*
 * One step of a walk: the entry behind `vid`, from the table's start when that is 4095 and `first`.
 * The table wraps, so an answer that is not above the start is the end of the walk: `found` false.
 */
int step(SW_Device *device, uint16_t vid, bool first, Vlan_Table_Entry *entry, bool *found)
{
    Vlan_Table_Entry answer = {};
    answer.vid = vid & VID_MASK;
    const uint16_t start = answer.vid;
    *found = false;
    if (!first && start == LAST_VID) {
        return SW_STATUS_OK;
    }
    const int status = run_operation(device, GET_NEXT, &answer, found);
    *found = *found && (first || answer.vid > start);
    if (status == SW_STATUS_OK && *found) {
        *entry = answer;
    }
    return status;
}

int get_entry(SW_Device *device, uint16_t vid, bool first, Vlan_Table_Entry *entry)
{
    bool found = false;
    const int status = step(device, vid, first, entry, &found);
    return status == SW_STATUS_OK && !found ? SW_STATUS_FAIL : status;
}

} // namespace

int swVtuFlush(SW_Device *device)
{
    const int status = Check_Global(device, device, FAMILY_VLAN);
    return status == SW_STATUS_OK ? run_operation(device, FLUSH, nullptr, nullptr) : status;
}

int swVtuAddEntry(SW_Device *device, const Vlan_Table_Entry *entry)
{
    const int status = Check_Global(device, entry, FAMILY_VLAN);
    if (status != SW_STATUS_OK) {
        return status;
    }
    Vlan_Table_Entry copy = *entry;
    return entry_is_in_range(*device, copy) ? run_operation(device, LOAD, &copy, nullptr)
                                            : SW_STATUS_BAD_PARAM;
}

int swVtuGetFirst(SW_Device *device, Vlan_Table_Entry *entry)
{
    const int status = Check_Global(device, entry, FAMILY_ALWAYS);
    return status == SW_STATUS_OK ? get_entry(device, LAST_VID, true, entry) : status;
}

int swVtuGetNext(SW_Device *device, Vlan_Table_Entry *entry)
{
    const int status = Check_Global(device, entry, FAMILY_ALWAYS);
    return status == SW_STATUS_OK ? get_entry(device, entry->vid, false, entry) : status;
}

int swVtuGetEntryCount(SW_Device *device, uint32_t *count)
{
    int status = Check_Global(device, count, FAMILY_ALWAYS);
    if (status != SW_STATUS_OK) {
        return status;
    }
    Vlan_Table_Entry entry = {};
    uint32_t counted = 0;
    bool found = false;
    status = step(device, LAST_VID, true, &entry, &found);
    while (status == SW_STATUS_OK && found) {
        ++counted;
        status = step(device, entry.vid, false, &entry, &found);
    }
    if (status == SW_STATUS_OK) {
        *count = counted;
    }
    return status;
}
