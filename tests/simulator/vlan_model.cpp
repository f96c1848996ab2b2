#include "tests/simulator/vlan_model.h"

namespace
{

constexpr int OK = 0;
constexpr int FAIL = 1;
constexpr int BAD_PARAM = 4;
constexpr int NOT_SUPPORTED = 16;

bool has_table(Model_Sets s)
{
    return (s.a & 0x7efffd97) > 3 || (s.b & 0x3f1) != 0;
}

bool has_states(Model_Sets s)
{
    return (s.a & 0x5a000) != 0 || (s.b & 0x3f1) != 0;
}

bool has_extended_fields(Model_Sets s)
{
    return (s.a & 0x60000) != 0;
}

bool has_override(const Vlan_Model &model)
{
    return model_is_newer(model.sets) && model.hardwarePorts.size() < 8;
}

/* A flag in its bit with a number below it, 0 without the flag. */
unsigned flagged(uint32_t flag, unsigned bit, unsigned number, unsigned first)
{
    return flag == 1 ? (1U << bit) | (number << first) : 0;
}

Vlan_Words pack(const Vlan_Model &model, const Vlan_Table_Entry &entry)
{
    unsigned data[3] = {};
    for (uint32_t port = 0; port < model.hardwarePorts.size(); port++) {
        const unsigned hardware = model_hardware_port(model.hardwarePorts, port);
        const unsigned state = has_states(model.sets) ? entry.portStateP[port] % 4U : 0;
        data[hardware / 4] |= (entry.memberTagP[port] % 4U + 4 * state) << (4 * (hardware % 4));
    }
    if (has_extended_fields(model.sets)) {
        data[1] |= flagged(entry.extPriOverride, 15, entry.extPriority % 8U, 12) |
                   flagged(entry.extSecondOverride, 11, entry.extSecondPriority % 4U, 9) |
                   flagged(entry.extRateLimit, 8, 0, 8);
    }
    if (has_override(model)) {
        data[2] = flagged(entry.vidPriOverride, 15, entry.vidPriority % 8U, 12);
    }
    Vlan_Words words = {};
    for (size_t k = 0; k < 3; k++) {
        words.data[k] = static_cast<uint16_t>(data[k]);
    }
    words.database = static_cast<uint16_t>(entry.dbNum % 16 + entry.dbNum / 16 * 256);
    return words;
}

Vlan_Table_Entry unpack(const Vlan_Model &model, uint32_t vid, const Vlan_Words &words)
{
    Vlan_Table_Entry entry = {};
    entry.vid = static_cast<uint16_t>(vid);
    entry.dbNum = static_cast<uint16_t>(words.database % 16 + words.database / 256 * 16);
    for (uint32_t port = 0; port < model.hardwarePorts.size(); port++) {
        const unsigned hardware = model_hardware_port(model.hardwarePorts, port);
        const unsigned bits = words.data[hardware / 4] >> (4 * (hardware % 4));
        entry.memberTagP[port] = bits % 4;
        entry.portStateP[port] = bits / 4 % 4;
    }
    if (has_extended_fields(model.sets)) {
        entry.extPriOverride = words.data[1] >> 15;
        entry.extPriority = (words.data[1] >> 12) % 8;
        entry.extSecondOverride = (words.data[1] >> 11) % 2;
        entry.extSecondPriority = (words.data[1] >> 9) % 4;
        entry.extRateLimit = (words.data[1] >> 8) % 2;
    }
    if (has_override(model)) {
        entry.vidPriOverride = words.data[2] >> 15;
        entry.vidPriority = (words.data[2] >> 12) % 8;
    }
    return entry;
}

int take(const Vlan_Model &model, std::map<uint32_t, Vlan_Words>::const_iterator found,
         Vlan_Table_Entry *entry)
{
    if (found == model.entries.end()) {
        return FAIL;
    }
    *entry = unpack(model, found->first, found->second);
    return OK;
}

} // namespace

int model_vlan_flush(Vlan_Model *model)
{
    if (!has_table(model->sets)) {
        return NOT_SUPPORTED;
    }
    model->entries.clear();
    return OK;
}

int model_vlan_add(Vlan_Model *model, const Vlan_Table_Entry &entry)
{
    if (!has_table(model->sets)) {
        return NOT_SUPPORTED;
    }
    if (entry.vid > 4095 || entry.dbNum > (model_is_oldest(model->sets) ? 15 : 63)) {
        return BAD_PARAM;
    }
    model->entries[entry.vid] = pack(*model, entry);
    return OK;
}

int model_vlan_first(const Vlan_Model &model, Vlan_Table_Entry *entry)
{
    return take(model, model.entries.begin(), entry);
}

int model_vlan_next(const Vlan_Model &model, Vlan_Table_Entry *entry)
{
    return take(model, model.entries.upper_bound(entry->vid % 4096U), entry);
}
