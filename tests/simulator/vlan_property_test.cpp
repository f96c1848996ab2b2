/* Random operations on the VLAN table of every simulated chip, against the words of its entries. */

#include "tests/simulator/driver_on_simulator.h"
#include "tests/simulator/vlan_model.h"
#include "tests/support/random_seed.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>
#include <sstream>

namespace
{

constexpr int OPERATIONS = 100; /* of a round */

class VlanProperty : public DriverOnSimulator
{
protected:
    void SetUp() override
    {
        DriverOnSimulator::SetUp();
        load();
        start_round();
    }

    void start_round();
    void do_one_call();
    void expect_same_table();

    std::mt19937 random{test_seed()};

private:
    uint32_t below(uint32_t bound) { return static_cast<uint32_t>(random() % bound); }
    Vlan_Table_Entry pick_entry();
    void add();
    void flush();
    void walk_from(bool first);
    void count();
    void expect_same(const char *name, int status, int expected);

    Vlan_Model model{};
    std::ostringstream calls;
};

void VlanProperty::start_round()
{
    model.sets = {GetParam().chip.familyA, GetParam().chip.familyB};
    model.hardwarePorts = GetParam().chip.hardwarePorts;
    model.entries.clear();
    chip->vlans.busyReads = below(4);
    std::memset(chip->vlans.entries, 0, sizeof chip->vlans.entries);
    calls.str("");
}

/* Few VLAN IDs, so that entries meet each other; numbers too large for their bits as well. */
Vlan_Table_Entry VlanProperty::pick_entry()
{
    static constexpr uint16_t VIDS[] = {0, 1, 2, 3, 100, 101, 2048, 4094, 4095, 4096, 65535};
    Vlan_Table_Entry entry = {};
    entry.vid = VIDS[below(std::size(VIDS))];
    entry.dbNum = static_cast<uint16_t>(below(below(4) == 0 ? 66 : 16));
    for (uint8_t &tag : entry.memberTagP) {
        tag = static_cast<uint8_t>(below(5));
    }
    for (uint8_t &state : entry.portStateP) {
        state = static_cast<uint8_t>(below(5));
    }
    for (uint32_t *flag : {&entry.vidPriOverride, &entry.vidPolicy, &entry.extPriOverride,
                           &entry.extSecondOverride, &entry.extRateLimit}) {
        *flag = below(3);
    }
    for (uint8_t *number :
         {&entry.vidPriority, &entry.sid, &entry.extPriority, &entry.extSecondPriority}) {
        *number = static_cast<uint8_t>(random());
    }
    return entry;
}

void VlanProperty::expect_same(const char *name, int status, int expected)
{
    calls << name << ": " << status << '\n';
    ASSERT_EQ(status, expected) << calls.str();
}

void VlanProperty::add()
{
    const Vlan_Table_Entry entry = pick_entry();
    calls << entry.vid << " database " << entry.dbNum << " tags "
          << testing::PrintToString(entry.memberTagP) << " states "
          << testing::PrintToString(entry.portStateP) << ' ';
    expect_same("add", swVtuAddEntry(&device, &entry), model_vlan_add(&model, entry));
}

void VlanProperty::flush()
{
    expect_same("flush", swVtuFlush(&device), model_vlan_flush(&model));
}

/* What is not found leaves the entry as it was. */
void VlanProperty::walk_from(bool first)
{
    Vlan_Table_Entry entry = pick_entry();
    Vlan_Table_Entry expected = entry;
    calls << entry.vid << ' ';
    if (first) {
        expect_same("first", swVtuGetFirst(&device, &entry), model_vlan_first(model, &expected));
    } else {
        expect_same("next", swVtuGetNext(&device, &entry), model_vlan_next(model, &expected));
    }
    ASSERT_EQ(std::memcmp(&entry, &expected, sizeof entry), 0) << entry.vid << '\n' << calls.str();
}

void VlanProperty::count()
{
    uint32_t counted = 77;
    expect_same("count", swVtuGetEntryCount(&device, &counted), SW_STATUS_OK);
    ASSERT_EQ(counted, model.entries.size()) << calls.str();
}

void VlanProperty::do_one_call()
{
    const uint32_t chosen = below(20);
    if (chosen < 10) {
        add();
    } else if (chosen == 10) {
        flush();
    } else if (chosen == 11) {
        count();
    } else {
        walk_from(chosen < 14);
    }
}

void VlanProperty::expect_same_table()
{
    let_the_last_write_end();
    while (chip->vlans.busy) {
        Sim_Vlan_Table_Read(&chip->vlans, SIM_VLAN_OPERATION);
    }
    for (uint32_t vid = 0; vid < SIM_VLANS; ++vid) {
        const Sim_Vlan_Entry &entry = chip->vlans.entries[vid];
        const auto expected = model.entries.find(vid);
        ASSERT_EQ(entry.valid, expected != model.entries.end()) << vid << '\n' << calls.str();
        if (entry.valid) {
            ASSERT_EQ(entry.database, expected->second.database) << vid << '\n' << calls.str();
            ASSERT_TRUE(std::ranges::equal(entry.data, expected->second.data))
                << vid << ' ' << testing::PrintToString(entry.data) << ", expected "
                << testing::PrintToString(expected->second.data) << '\n'
                << calls.str();
        }
    }
}

TEST_P(VlanProperty, TableHoldsTheWordsOfTheEntries)
{
    const int rounds = test_rounds(30);
    for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
        start_round();
        for (int call = 0; call < OPERATIONS && !HasFatalFailure(); ++call) {
            do_one_call();
        }
        if (!HasFatalFailure()) {
            expect_same_table();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Chips, VlanProperty, testing::ValuesIn(driven_cases()), driven_name);

} // namespace
