/* Faults as people write them. */

#include "simulator/fault_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ostream>
#include <string>
#include <vector>

namespace
{

/* In the order of the record: kind, first, count, address, register, error. */
std::vector<uint64_t> facts(const Sim_Fault &fault)
{
    return {fault.kind,    fault.first,          fault.count,
            fault.address, fault.registerNumber, static_cast<uint64_t>(fault.error)};
}

struct Row {
    const char *text;
    Sim_Fault fault;
};

const Row ACCEPTED[] = {
    {"1", {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY, EIO}},
    {"7:3", {SIM_FAULT_FAIL, 7, 3, SIM_ANY, SIM_ANY, EIO}},
    {"7:forever", {SIM_FAULT_FAIL, 7, SIM_FOREVER, SIM_ANY, SIM_ANY, EIO}},
    {"7::ETIMEDOUT", {SIM_FAULT_FAIL, 7, 1, SIM_ANY, SIM_ANY, ETIMEDOUT}},
    {"7:2:EPERM", {SIM_FAULT_FAIL, 7, 2, SIM_ANY, SIM_ANY, EPERM}},
    {"7:2:EHWPOISON", {SIM_FAULT_FAIL, 7, 2, SIM_ANY, SIM_ANY, EHWPOISON}},
    {"7:2:ENOTRECOVERABLE", {SIM_FAULT_FAIL, 7, 2, SIM_ANY, SIM_ANY, ENOTRECOVERABLE}},
    {"0x10:0xa:ones", {SIM_FAULT_ALL_ONES, 16, 10, SIM_ANY, SIM_ANY, EIO}},
    {"1:1:busy:0x1B:5", {SIM_FAULT_BUSY, 1, 1, 0x1B, 5, EIO}},
    {"1:::0", {SIM_FAULT_FAIL, 1, 1, 0, SIM_ANY, EIO}},
    {"1::::0", {SIM_FAULT_FAIL, 1, 1, SIM_ANY, 0, EIO}},
    {"1:::any:31", {SIM_FAULT_FAIL, 1, 1, SIM_ANY, 31, EIO}},
    {"1:::31:any", {SIM_FAULT_FAIL, 1, 1, 31, SIM_ANY, EIO}},
    {"00000000000000000000001", {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY, EIO}},
    {"4294967294:4294967294", {SIM_FAULT_FAIL, 4294967294, 4294967294, SIM_ANY, SIM_ANY, EIO}},
};

TEST(FaultText, IsRead)
{
    for (const Row &row : ACCEPTED) {
        Sim_Fault fault = {};
        EXPECT_TRUE(Sim_Fault_Of_Text(row.text, &fault)) << row.text;
        EXPECT_EQ(facts(fault), facts(row.fault)) << row.text;
    }
}

constexpr const char *REFUSED[] = {
    "",
    "0",
    "000000000000000000000001", /* of 24 characters: no field is so long */
    ":",
    ":2",
    "1:",
    "1:0",
    "1:2:",
    "1::",
    "1:2:EIO:1:1:",
    "1:2:EIO:1:1:1",
    "1:2:eio",
    "1:2:EI",
    "1:2:5",
    "1:2:EIO:32",
    "1:2:EIO:-1",
    "1:2:EIO:1:32",
    "x",
    "1x",
    "1 ",
    " 1",
    "-1",
    "+1",
    "0x",
    "0xg",
    "0x-1",
    "4294967295",
    "4294967296",
    "18446744073709551617",
    "1:always",
    "1:2:ENOTRECOVERABLEANDFAR",
    "1:2:EIO:ANY",
};

TEST(FaultText, OfAnyOtherFormIsRefused)
{
    const Sim_Fault before = {SIM_FAULT_BUSY, 9, 9, 9, 9, 9};
    for (const char *text : REFUSED) {
        Sim_Fault fault = before;
        EXPECT_FALSE(Sim_Fault_Of_Text(text, &fault)) << text;
        EXPECT_EQ(facts(fault), facts(before)) << text;
    }
}

/* Takes a number, or gives 99 for a refused text. */
uint32_t number_of(const char *text, uint32_t most)
{
    uint32_t number = 99;
    const bool taken = Sim_Number_Of_Text(text, most, &number);
    EXPECT_EQ(taken, number != 99) << text;
    return number;
}

TEST(NumberText, IsDecimalOrHexadecimalUpToALimit)
{
    EXPECT_EQ(number_of("0", 31), 0U);
    EXPECT_EQ(number_of("31", 31), 31U);
    EXPECT_EQ(number_of("0x1f", 31), 31U);
    EXPECT_EQ(number_of("010", 31), 10U) << "no octal numbers";
    EXPECT_EQ(number_of("4294967295", 0xFFFFFFFF), 0xFFFFFFFFU);
    for (const char *text : {"32", "0x20", "", "0x", "1.0", "0X1", "4294967297", "-1"}) {
        EXPECT_EQ(number_of(text, 31), 99U) << text;
    }
}

} // namespace
