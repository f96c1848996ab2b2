#pragma once

#include "tests/switch/chip/fake_bus.h"

#include <gtest/gtest.h>

/* A test on the board's chip. */
class Board_Test : public testing::Test
{
protected:
    Fake_Bus bus;
    SW_Device device = make_board_device();
};
