#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

/*
 * Lines that an operator could type into the full menu, most of them keys and answers, some of them
 * any bytes; the same ones for the same seed. Every key of the menu is among them: applies, saves,
 * loads.
 */
class Random_Lines
{
public:
    explicit Random_Lines(uint32_t seed) : random_(seed) {}

    /* One line with its line feed. */
    std::string next();

    /* So many lines. */
    std::string next(int count);

private:
    uint32_t below(size_t bound);
    std::string bytes(uint32_t length);

    std::mt19937 random_;
};
