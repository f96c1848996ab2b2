/* Random settings of the real driver on every simulated chip, against plain registers. */

#include "simulator/registers.h"
#include "switch/chip/chips.h"
#include "tests/simulator/driver_on_simulator.h"
#include "tests/simulator/register_model.h"
#include "tests/support/random_seed.h"

#include <algorithm>
#include <random>
#include <sstream>

namespace
{

constexpr int OPERATIONS = 200;          /* of a round */
constexpr unsigned VLAN_REGISTERS = 5;   /* 5 to 9 of the global ones: the VLAN table's */
constexpr uint32_t GARBAGE = 0xDEADBEEF; /* in what a get must leave alone */

/* One call with what came of it and what the model says. */
struct Call {
    const Model_Row *row;
    bool sets;
    bool null; /* a get without a place for the values */
    uint32_t index;
    Model_Values values;
    int status = 0;
    Model_Values answer = {};
    int expectedStatus = 0;
    Model_Values expectedAnswer = {};
    bool as_expected = false;
};

std::ostream &operator<<(std::ostream &stream, const Call &call)
{
    const auto list = [&stream](const Model_Values &values) {
        stream << " {" << values[0] << ", " << values[1] << ", " << values[2] << "}";
    };
    stream << (call.sets ? "set " : "get ") << call.row->name << ' ' << call.index;
    if (call.null) {
        stream << " null";
    }
    list(call.values);
    stream << ": " << call.status;
    list(call.answer);
    if (!call.as_expected) {
        stream << "; expected " << call.expectedStatus;
        list(call.expectedAnswer);
    }
    return stream << '\n';
}

class RegisterProperty : public testing::TestWithParam<Driven_Chip>
{
protected:
    /* A chip reached in a random way, all its registers random, with its model. */
    void start_round();
    void end_round();
    void do_one_call();
    void expect_same_registers();
    void expect_same_pages();
    std::string trace() const;

    std::mt19937 random{test_seed()};

private:
    uint32_t below(uint32_t bound) { return static_cast<uint32_t>(random() % bound); }
    uint32_t pick_number();
    uint32_t pick_index(const Model_Row &row);
    Model_Values pick_values(const Model_Row &row);
    Call pick_call();
    bool is_compared(unsigned address, unsigned number) const;
    void fill_registers();
    void take_model();
    void let_the_last_write_end();

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
    Sim_Placement placement{};
    Sim_Layer seam{};
    Sim_Counters counters{};
    SW_Device device{};
    Register_Model model{};
    std::vector<Call> calls;
};

/* Small numbers mostly: those that fit a field or are just too large for it. */
uint32_t RegisterProperty::pick_number()
{
    switch (below(4)) {
    case 0:
        return below(3);
    case 1:
        return below(20);
    case 2:
        return below(5000);
    default:
        return static_cast<uint32_t>(random());
    }
}

uint32_t RegisterProperty::pick_index(const Model_Row &row)
{
    if (row.kind >= Model_Kind::CLASS && row.kind != Model_Kind::PHY_PAGE) {
        return below(8) == 0 ? pick_number() : below(64);
    }
    return below(8) == 0 ? pick_number() : below(GetParam().ports);
}

/* Pages and registers of a PHY that exist, or registers just beyond; the others are free. */
Model_Values RegisterProperty::pick_values(const Model_Row &row)
{
    if (row.kind == Model_Kind::PHY_PAGE) {
        return {below(65536), 1 + below(31), below(34)};
    }
    return {pick_number(), pick_number(), pick_number()};
}

Call RegisterProperty::pick_call()
{
    const auto rows = model_rows();
    Call call = {};
    call.row = &rows[below(static_cast<uint32_t>(rows.size()))];
    call.sets = call.row->set != nullptr && below(2) == 0;
    call.null = !call.sets && below(20) == 0;
    call.index = pick_index(*call.row);
    call.values = pick_values(*call.row);
    if (!call.sets) {
        call.values[0] = GARBAGE & 0xFFFF;
    }
    return call;
}

void RegisterProperty::do_one_call()
{
    Call call = pick_call();
    const Model_Row &row = *call.row;
    call.answer = call.expectedAnswer = call.values;
    counters.reads = counters.writes = 0;
    if (call.sets) {
        call.status = row.set(&device, call.index, call.values);
        call.expectedStatus = model_set(&model, row, call.index, call.values);
    } else {
        call.status = row.get(&device, call.index, call.null ? nullptr : &call.answer);
        call.expectedStatus =
            model_get(&model, row, call.index, call.null ? nullptr : &call.expectedAnswer);
    }
    const bool accessed = counters.reads + counters.writes != 0;
    const bool unknown = (device.state & SW_STATE_RATE_UNKNOWN) != 0;
    call.as_expected = call.status == call.expectedStatus && call.answer == call.expectedAnswer &&
                       accessed == (call.status == SW_STATUS_OK) && unknown == model.rateUnknown;
    calls.push_back(call);
    ASSERT_TRUE(call.as_expected) << (accessed ? "accessed" : "not accessed") << ", rate "
                                  << (unknown ? "unknown" : "known") << '\n'
                                  << trace();
}

/* Busy bits take their time in half of the rounds. */
void RegisterProperty::start_round()
{
    const auto &rows = Sim_Chip_Rows();
    const auto row = std::ranges::find(rows, GetParam().identifier, &Sim_Chip_Row::identifier);
    ASSERT_NE(row, rows.end());
    const bool direct = below(2) == 0;
    placement = {direct ? SIM_DIRECT : SIM_INDIRECT, static_cast<uint8_t>(below(direct ? 17 : 32))};
    Sim_Chip_Init(chip.get(), *row, placement);
    chip->command.busyReads = below(2) * below(4);
    ASSERT_TRUE(Sim_Seam_Install(&seam, chip.get()));
    SW_Sys_Config config = driver_configuration(GetParam(), placement.mode);
    config.address = placement.address;
    device = {};
    ASSERT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    ASSERT_TRUE(Sim_Counters_Install(&counters));
    let_the_last_write_end();
    fill_registers();
    take_model();
    calls.clear();
}

void RegisterProperty::end_round()
{
    ASSERT_TRUE(Sim_Layer_Remove(&counters.layer));
    ASSERT_TRUE(Sim_Layer_Remove(&seam));
}

void RegisterProperty::fill_registers()
{
    const auto fill = [this](uint16_t(&registers)[SIM_BUS_REGISTERS]) {
        for (uint16_t &content : registers) {
            content = static_cast<uint16_t>(random());
        }
    };
    for (auto &port : chip->ports) {
        fill(port);
    }
    fill(chip->global);
    fill(chip->secondGlobal);
    fill(chip->remaining);
}

void RegisterProperty::take_model()
{
    model = {};
    model.sets = {GetParam().familyA, GetParam().familyB};
    model.hardwarePorts = GetParam().hardwarePorts;
    model.phyPorts = chip->row.phyPorts;
    model.base = placement.mode == SIM_DIRECT ? placement.address : 0;
    for (uint8_t port = 0; port < SIM_PORTS; port++) {
        const Sim_Link link = Sim_Chip_Link(*chip, port);
        model.links[port] = {link.full ? 1U : 0, link.speed};
    }
    for (uint8_t address = 0; address < 32; address++) {
        for (uint8_t number = 0; number < 32; number++) {
            model.registers[address][number] = Sim_Registers_Read(chip.get(), address, number);
        }
    }
}

/* An indirect write goes on after it returns: ends it, so that the chip can be looked into. */
void RegisterProperty::let_the_last_write_end()
{
    while (chip->command.busy) {
        Sim_Chip_Read(chip.get(), placement.address, 0);
    }
}

bool RegisterProperty::is_compared(unsigned address, unsigned number) const
{
    return address != model_global_address(model) || number < VLAN_REGISTERS ||
           number >= VLAN_REGISTERS + 5;
}

void RegisterProperty::expect_same_registers()
{
    let_the_last_write_end();
    for (uint8_t address = 0; address < 32; address++) {
        for (uint8_t number = 0; number < 32; number++) {
            const uint16_t content = Sim_Registers_Read(chip.get(), address, number);
            ASSERT_TRUE(content == model.registers[address][number] ||
                        !is_compared(address, number))
                << "address " << int{address} << " register " << int{number} << ": " << content
                << ", expected " << model.registers[address][number] << '\n'
                << trace();
        }
    }
}

void RegisterProperty::expect_same_pages()
{
    for (unsigned port = 0; port < SIM_PORTS; port++) {
        for (unsigned page = 1; page < SIM_PHY_PAGES; page++) {
            for (unsigned number = 0; number < SIM_PHY_REGISTERS; number++) {
                const unsigned expected =
                    number == SIM_PHY_PAGE_REGISTER ? 0 : model_page(model, port, page, number);
                ASSERT_EQ(chip->phys[port].pages[page][number], expected)
                    << "port " << port << " page " << page << " register " << number << '\n'
                    << trace();
            }
        }
    }
}

std::string RegisterProperty::trace() const
{
    std::ostringstream text;
    text << (placement.mode == SIM_DIRECT ? "direct " : "indirect ") << int{placement.address}
         << ", busy for " << chip->command.busyReads << '\n';
    for (const Call &call : calls) {
        text << call;
    }
    return text.str();
}

TEST_P(RegisterProperty, TwinsSetAndGetTheBitsOfTheMap)
{
    const int rounds = test_rounds(300);
    for (int round = 0; round < rounds && !HasFatalFailure(); round++) {
        start_round();
        for (int call = 0; call < OPERATIONS && !HasFatalFailure(); call++) {
            do_one_call();
        }
        if (!HasFatalFailure()) {
            expect_same_registers();
        }
        if (!HasFatalFailure()) {
            expect_same_pages();
        }
        end_round();
    }
}

INSTANTIATE_TEST_SUITE_P(Chips, RegisterProperty, testing::ValuesIn(driven_chips()),
                         [](const auto &row) { return std::string(row.param.name); });

/* The chips that are driven here are all that the driver knows and all that can be simulated. */
TEST(RegisterPropertyChips, AreAllOfThem)
{
    std::vector<uint16_t> driven;
    for (const Driven_Chip &chip : driven_chips()) {
        driven.push_back(chip.identifier);
    }
    std::vector<uint16_t> simulated;
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        simulated.push_back(row.identifier);
    }
    EXPECT_EQ(driven, simulated);
    std::vector<uint16_t> known;
    for (const Chip_Row &row : Chip_Table()) {
        known.push_back(row.identifier);
    }
    EXPECT_EQ(driven, known);
}

} // namespace
