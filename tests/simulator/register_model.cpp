#include "tests/simulator/register_model.h"

namespace
{

using Bits = Model_Bits;
using Sets = Model_Sets;
using Values = Model_Values;
using enum Model_Kind;

constexpr int OK = 0;
constexpr int FAIL = 1;
constexpr int BAD_PARAM = 4;
constexpr int NOT_SUPPORTED = 16;
constexpr uint32_t NO_MIRROR = 15;
constexpr uint32_t PAGE_REGISTER = 22;

bool facts_from_phy(Sets s)
{
    return (s.a & 0x60000) != 0;
}

/* How a chip holds a rate: a code, or a divisor over a factor. */
struct Rate_Place {
    Bits bits;
    uint64_t factor; /* 0: code */
    bool roundedUp;
};

Rate_Place pri0_place(Sets s)
{
    if ((s.a & 0x7ef9fc00) == 0 && (s.b & 0x800) == 0) {
        return {{10, 8, 3}, 0, false};
    }
    if ((s.a & 0x1c400) != 0) {
        return {{9, 0, 12}, 28, false};
    }
    return {{9, 0, 12}, 32, true};
}

Rate_Place egress_place(Sets s)
{
    if (model_is_oldest(s)) {
        return {{10, 0, 3}, 0, false};
    }
    if ((s.b & 0x3f1) != 0) {
        return {{9, 0, 12}, 40, true};
    }
    if ((s.a & 0x60000) != 0) {
        return {{10, 0, 12}, 40, true};
    }
    if ((s.a & 0x1c400) != 0) {
        return {{10, 0, 12}, 28, false};
    }
    return {{10, 0, 12}, 32, true};
}

Rate_Place rate_place(const Register_Model &model, Model_Kind kind)
{
    return kind == PRI0_RATE ? pri0_place(model.sets) : egress_place(model.sets);
}

bool has_phy(const Register_Model &model, unsigned hardwarePort)
{
    return ((model.phyPorts >> hardwarePort) & 1) != 0;
}

uint16_t *port_registers(Register_Model *model, uint32_t port)
{
    const unsigned first = model_is_newer(model->sets) ? 0x10 : model->base + 8;
    return model->registers[first + model_hardware_port(model->hardwarePorts, port)];
}

uint16_t *registers_of(Register_Model *model, const Model_Row &row, uint32_t index)
{
    return row.kind < CLASS ? port_registers(model, index)
                            : model->registers[model_global_address(*model)];
}

void write(uint16_t *registers, Bits bits, uint64_t value)
{
    for (unsigned bit = 0; bit < bits.length; bit++) {
        const unsigned mask = 1U << (bits.first + bit);
        const bool one = ((value >> bit) & 1) != 0;
        registers[bits.number] = static_cast<uint16_t>(one ? registers[bits.number] | mask
                                                           : registers[bits.number] & ~mask);
    }
}

uint32_t read(const uint16_t *registers, Bits bits)
{
    return (uint32_t{registers[bits.number]} >> bits.first) % (1U << bits.length);
}

/* Two bits each, eight to a register; the indexes repeat after 8 user priorities and 64 DSCPs. */
Bits class_bits(Bits first, uint32_t index)
{
    const uint32_t entry = index % (first.number == 24 ? 8 : 64);
    return {first.number + entry / 8, 2 * (entry % 8), 2};
}

constexpr uint64_t KILOBITS[] = {0,    128,   256,   512,   1000,   2000,  4000,
                                 8000, 16000, 32000, 64000, 128000, 256000};
constexpr uint32_t CODES = 13;
constexpr uint64_t DIVIDEND = 8000000;

uint64_t divisor_of(uint64_t kilobits, const Rate_Place &place)
{
    if (kilobits == 0) {
        return 0;
    }
    const uint64_t product = kilobits * place.factor;
    const uint64_t rest = place.roundedUp && DIVIDEND % product != 0 ? 1 : 0;
    const uint64_t divisor = DIVIDEND / product + rest;
    return divisor == 0 ? 1 : divisor;
}

int set_rate(Register_Model *model, uint16_t *registers, const Rate_Place &place, uint32_t rate)
{
    if (place.factor == 0) {
        if (rate > 7) {
            return BAD_PARAM;
        }
        write(registers, place.bits, rate);
        return OK;
    }
    model->rateUnknown = rate >= CODES;
    write(registers, place.bits, divisor_of(rate < CODES ? KILOBITS[rate] : rate, place));
    return OK;
}

uint32_t get_rate(Register_Model *model, const uint16_t *registers, const Rate_Place &place)
{
    const uint32_t content = read(registers, place.bits);
    if (place.factor == 0) {
        return content;
    }
    uint32_t code = 0;
    while (code < CODES && divisor_of(KILOBITS[code], place) != content) {
        code++;
    }
    model->rateUnknown = code == CODES;
    return code < CODES ? code : static_cast<uint32_t>(DIVIDEND / (content * place.factor));
}

/* Management frames, gap, preamble. */
std::array<Bits, 3> bytes_count_bits(Sets s)
{
    if (model_is_newer(s)) {
        return {{{9, 15, 1}, {10, 13, 1}, {10, 12, 1}}};
    }
    return {{{10, 6, 1}, {10, 5, 1}, {10, 4, 1}}};
}

int set_mirror(Register_Model *model, const Model_Row &row, uint16_t *registers, uint32_t port)
{
    const uint32_t target =
        port == NO_MIRROR ? NO_MIRROR : model_hardware_port(model->hardwarePorts, port);
    write(registers, row.place(model->sets), target);
    return OK;
}

/* The driver's number of a hardware port, 15 when it has none. */
uint32_t get_mirror(const Register_Model &model, uint32_t target)
{
    for (uint32_t port = 0; port < model.hardwarePorts.size(); port++) {
        if (model_hardware_port(model.hardwarePorts, port) == target) {
            return port;
        }
    }
    return NO_MIRROR;
}

/* The statuses that come before the value is looked at. */
int check(const Register_Model &model, const Model_Row &row, uint32_t index)
{
    const bool of_port = row.kind < CLASS || row.kind == PHY_PAGE;
    if (of_port && model_hardware_port(model.hardwarePorts, index) == MODEL_NO_PORT) {
        return BAD_PARAM;
    }
    const bool from_phy = row.kind == LINK_FACT && facts_from_phy(model.sets);
    if ((from_phy || row.kind == PHY_PAGE) &&
        !has_phy(model, model_hardware_port(model.hardwarePorts, index))) {
        return NOT_SUPPORTED;
    }
    return row.supported(model.sets) ? OK : NOT_SUPPORTED;
}

int check_value(const Register_Model &model, const Model_Row &row, const Values &values)
{
    if (row.kind == EGRESS_MODE && values[0] > 3) {
        return FAIL;
    }
    if (row.kind == EGRESS_MODE && values[0] == 3 && (model.sets.a & 0x7efdafd6) == 0) {
        return NOT_SUPPORTED;
    }
    return row.kind == PHY_PAGE && values[2] > 31 ? FAIL : OK;
}

/* A mirror destination is itself a port, and is so checked before the chip's support. */
int check_set(const Register_Model &model, const Model_Row &row, uint32_t index,
              const Values &values)
{
    if (row.kind == MIRROR_DEST && values[0] != NO_MIRROR &&
        model_hardware_port(model.hardwarePorts, values[0]) == MODEL_NO_PORT) {
        return BAD_PARAM;
    }
    const int status = check(model, row, index);
    return status == OK ? check_value(model, row, values) : status;
}

uint32_t link_fact(const Register_Model &model, const uint16_t *registers, const Model_Row &row,
                   uint32_t port)
{
    const Bits bits = row.place(model.sets);
    if (!facts_from_phy(model.sets)) {
        return read(registers, bits);
    }
    const Model_Link &link = model.links[model_hardware_port(model.hardwarePorts, port)];
    return bits.first == 8 ? link.speed : link.full;
}

} // namespace

unsigned model_hardware_port(const std::string &hardwarePorts, uint32_t port)
{
    if (port >= hardwarePorts.size()) {
        return MODEL_NO_PORT;
    }
    const char letter = hardwarePorts[port];
    return letter == 'A' ? 10 : static_cast<unsigned>(letter - '0');
}

unsigned model_global_address(const Register_Model &model)
{
    return model_is_newer(model.sets) ? 0x1B : model.base + 15;
}

uint16_t model_page(const Register_Model &model, unsigned hardwarePort, unsigned page,
                    unsigned number)
{
    if (number == PAGE_REGISTER) {
        return static_cast<uint16_t>(page);
    }
    const auto written = model.pages.find({hardwarePort, page, number});
    if (written != model.pages.end()) {
        return written->second;
    }
    return page == 3 && number == 16 ? 0x1021 : 0; /* the LEDs */
}

int model_set(Register_Model *model, const Model_Row &row, uint32_t index, const Values &values)
{
    const int status = check_set(*model, row, index, values);
    if (status != OK) {
        return status;
    }
    uint16_t *registers = registers_of(model, row, index);
    switch (row.kind) {
    case FLAG:
        write(registers, row.place(model->sets), values[0] == 1 ? 1 : 0);
        break;
    case BYTES_COUNT:
        for (size_t flag = 0; flag < 3; flag++) {
            write(registers, bytes_count_bits(model->sets)[flag], values[flag] == 1 ? 1 : 0);
        }
        break;
    case PRI0_RATE:
    case EGRESS_RATE:
        return set_rate(model, registers, rate_place(*model, row.kind), values[0]);
    case CLASS:
        write(registers, class_bits(row.place(model->sets), index), values[0]);
        break;
    case FRAME_SIZE:
        write(registers, row.place(model->sets), values[0] == 1 ? 0 : 1);
        break;
    case MIRROR_DEST:
        return set_mirror(model, row, registers, values[0]);
    case PHY_PAGE:
        if (values[2] != PAGE_REGISTER) {
            model->pages[{model_hardware_port(model->hardwarePorts, index), values[1], values[2]}] =
                static_cast<uint16_t>(values[0]);
        }
        break;
    default:
        write(registers, row.place(model->sets), values[0]);
    }
    return OK;
}

int model_get(Register_Model *model, const Model_Row &row, uint32_t index, Values *values)
{
    int status = check(*model, row, index);
    if (values == nullptr) {
        return BAD_PARAM;
    }
    if (status == OK && row.kind == PHY_PAGE) {
        status = check_value(*model, row, *values);
    }
    if (status != OK) {
        return status;
    }
    const uint16_t *registers = registers_of(model, row, index);
    uint32_t &value = (*values)[0];
    switch (row.kind) {
    case BYTES_COUNT:
        for (size_t flag = 0; flag < 3; flag++) {
            (*values)[flag] = read(registers, bytes_count_bits(model->sets)[flag]);
        }
        break;
    case PRI0_RATE:
    case EGRESS_RATE:
        value = get_rate(model, registers, rate_place(*model, row.kind));
        break;
    case LINK_FACT:
        value = link_fact(*model, registers, row, index);
        break;
    case CLASS:
        value = read(registers, class_bits(row.place(model->sets), index));
        break;
    case FRAME_SIZE:
        value = read(registers, row.place(model->sets)) == 0 ? 1 : 0;
        break;
    case MIRROR_DEST:
        value = get_mirror(*model, read(registers, row.place(model->sets)));
        break;
    case PHY_PAGE:
        value = model_page(*model, model_hardware_port(model->hardwarePorts, index), (*values)[1],
                           (*values)[2]);
        break;
    default:
        value = read(registers, row.place(model->sets));
    }
    return OK;
}
