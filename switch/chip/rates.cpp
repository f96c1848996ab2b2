#include "switch/chip/rates.h"

#include "switch/chip/checks.h"
#include "switch/chip/fields.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace
{

/* Kilobits per second of the rate codes. */
constexpr uint32_t RATE_KILOBITS[] = {0,    128,   256,   512,   1000,   2000,  4000,
                                      8000, 16000, 32000, 64000, 128000, 256000};
static_assert(std::size(RATE_KILOBITS) == GT_256M + 1);

constexpr uint64_t DIVIDEND = 8000000;

enum Rate_Kind : uint8_t { CODE, ROUNDED_UP, ROUNDED_DOWN };

/* How the chips that pass the test hold one of the two rates; the first row that passes counts. */
struct Rate_Row {
    Family_Test layout;
    Field field;
    Rate_Kind kind;
    uint8_t factor;
};

constexpr Family_Test OVER_28 = {Family_Compare::ANY, A_DIVISOR_28, 0, 0};
constexpr Family_Test EGRESS_BLOCK_A = {Family_Compare::ANY, A_EGRESS_BLOCK, 0, 0};
constexpr Family_Test EGRESS_BLOCK_B = {Family_Compare::ANY, 0, B_GROUP, 0};
constexpr Family_Test PRI0_DIVISOR = {Family_Compare::ANY, A_PRI0_DIVISOR, B_NEWER_LAYOUT, 0};

// clang-format off
constexpr Rate_Row EGRESS_ROWS[] = {
    {EGRESS_BLOCK_A,    {10, 0, 12}, ROUNDED_UP,   32},
    {EGRESS_BLOCK_B,    {9,  0, 12}, ROUNDED_UP,   40},
    {FAMILY_EXTENDED,   {10, 0, 12}, ROUNDED_UP,   40},
    {OVER_28,           {10, 0, 12}, ROUNDED_DOWN, 28},
    {FAMILY_NOT_OLDEST, {10, 0, 12}, ROUNDED_UP,   32},
    {FAMILY_ALWAYS,     {10, 0, 3},  CODE,         0},
};
constexpr Rate_Row PRI0_ROWS[] = {
    {OVER_28,           {9,  0, 12}, ROUNDED_DOWN, 28},
    {PRI0_DIVISOR,      {9,  0, 12}, ROUNDED_UP,   32},
    {FAMILY_ALWAYS,     {10, 8, 3},  CODE,         0},
};
// clang-format on

/* One of the two rates. */
struct Rate {
    Family_Test support;
    std::span<const Rate_Row> rows;
};
constexpr Rate EGRESS = {{Family_Compare::ANY, A_EGRESS_RATE, B_GROUP, 0}, EGRESS_ROWS};
constexpr Rate PRI0 = {FAMILY_INGRESS_RATE, PRI0_ROWS};

const Rate_Row &find_row(const SW_Device &device, const Rate &rate)
{
    return *std::ranges::find_if(
        rate.rows, [&device](const Rate_Row &row) { return Family_Passes(row.layout, device); });
}

/* In 64 bits: in 32 the product of an unknown rate can be 0. The field write cuts the result. */
uint32_t divisor_of(uint64_t kilobits, const Rate_Row &row)
{
    if (kilobits == 0) {
        return 0;
    }
    const uint64_t product = kilobits * row.factor;
    const uint64_t divisor = (DIVIDEND + (row.kind == ROUNDED_UP ? product - 1 : 0)) / product;
    return divisor != 0 ? static_cast<uint32_t>(divisor) : 1;
}

uint32_t rate_to_divisor(SW_Device *device, uint32_t rate, const Rate_Row &row)
{
    device->state &= ~SW_STATE_RATE_UNKNOWN;
    if (rate < std::size(RATE_KILOBITS)) {
        return divisor_of(RATE_KILOBITS[rate], row);
    }
    device->state |= SW_STATE_RATE_UNKNOWN;
    return divisor_of(rate, row);
}

uint32_t divisor_to_rate(SW_Device *device, uint32_t divisor, const Rate_Row &row)
{
    device->state &= ~SW_STATE_RATE_UNKNOWN;
    for (uint32_t rate = 0; rate < std::size(RATE_KILOBITS); ++rate) {
        if (divisor_of(RATE_KILOBITS[rate], row) == divisor) {
            return rate;
        }
    }
    device->state |= SW_STATE_RATE_UNKNOWN;
    return static_cast<uint32_t>(DIVIDEND / (uint64_t{divisor} * row.factor));
}

/* `value` is the caller's pointer, null when there is none to read from. */
int set_rate(SW_Device *device, uint32_t port, const Rate &rate, const uint32_t *value)
{
    uint8_t hardware_port = 0;
    const int status = Check_Port(device, port, value, rate.support, &hardware_port);
    if (status != SW_STATUS_OK) {
        return status;
    }
    const Rate_Row &row = find_row(*device, rate);
    if (row.kind == CODE) {
        return *value > GT_8M ? SW_STATUS_BAD_PARAM
                              : Field_Write_Port(device, hardware_port, row.field, *value);
    }
    return Field_Write_Port(device, hardware_port, row.field, rate_to_divisor(device, *value, row));
}

int get_rate(SW_Device *device, uint32_t port, const Rate &rate, uint32_t *value)
{
    uint8_t hardware_port = 0;
    int status = Check_Port(device, port, value, rate.support, &hardware_port);
    if (status != SW_STATUS_OK) {
        return status;
    }
    const Rate_Row &row = find_row(*device, rate);
    uint32_t content = 0;
    status = Field_Read_Port(device, hardware_port, row.field, &content);
    if (status == SW_STATUS_OK) {
        *value = row.kind == CODE ? content : divisor_to_rate(device, content, row);
    }
    return status;
}

} // namespace

int swSetPri0Rate(SW_Device *device, uint32_t port, uint32_t rate)
{
    return set_rate(device, port, PRI0, &rate);
}

int swGetPri0Rate(SW_Device *device, uint32_t port, uint32_t *rate)
{
    return get_rate(device, port, PRI0, rate);
}

int swSetEgressRate(SW_Device *device, uint32_t port, const SW_Egress_Rate *rate)
{
    return set_rate(device, port, EGRESS, rate != nullptr ? &rate->rate : nullptr);
}

int swGetEgressRate(SW_Device *device, uint32_t port, SW_Egress_Rate *rate)
{
    return get_rate(device, port, EGRESS, rate != nullptr ? &rate->rate : nullptr);
}
