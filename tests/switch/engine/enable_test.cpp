#include "switch/engine/bring_up.h"
#include "tests/switch/engine/board.h"
#include "tests/switch/engine/load_stand_in.h"

namespace
{

constexpr const char *VERBOSE_TEXT = "Try load marvell switch driver......done.\n"
                                     "Marvell switch init success!\n"
                                     "Device ID     : 0x105\n"
                                     "Base Reg Addr : 0x10\n"
                                     "No of Ports   : 6\n"
                                     "CPU Port      : 3\n";
constexpr const char *ENABLE_TEXT = "sysConfig return Failed\n";
constexpr const char *FRAME_TEXT = "MaxFrameSize  : 1632 Bytes\n";

class FailedEnable : public Board
{
protected:
    FailedEnable() { stand_in_enable_status = 19; }
    ~FailedEnable() override { stand_in_enable_status = SW_STATUS_OK; }

    template <class Call>
    std::string run(Call call)
    {
        return printed([&] { result_ = call(); });
    }

    int result_ = 12345;
};

TEST_F(FailedEnable, QuietPrintsTheLineAndReturnsTheStatus)
{
    EXPECT_EQ(run([&] { return SW_Init_Quiet(&control_); }), ENABLE_TEXT);
    EXPECT_EQ(result_, 19);
    EXPECT_EQ(waits_, (std::vector<uint32_t>{100000, 100000}));
}

TEST_F(FailedEnable, VerbosePrintsItBehindTheChip)
{
    EXPECT_EQ(run([&] { return SW_Init(&control_, true); }),
              std::string(VERBOSE_TEXT) + ENABLE_TEXT);
    EXPECT_EQ(result_, 19);
}

TEST_F(FailedEnable, ReInitStillPreparesThePorts)
{
    EXPECT_EQ(run([&] { return SW_ReInit(&control_); }),
              std::string(VERBOSE_TEXT) + ENABLE_TEXT + FRAME_TEXT);
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(chip_.phys[2].advertisement, 0x0101); /* the CPU port's: 100 Mbit/s full duplex */
    EXPECT_EQ(chip_.global[4], 0x0400);
    EXPECT_EQ(chip_.phys[0].pages[3][16], 0x102E);
}

TEST_F(FailedEnable, SuccessIsSilent)
{
    stand_in_enable_status = SW_STATUS_OK;
    EXPECT_EQ(run([&] { return SW_Init_Quiet(&control_); }), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(run([&] { return SW_ReInit(&control_); }), std::string(VERBOSE_TEXT) + FRAME_TEXT);
    EXPECT_EQ(result_, 0);
}

} // namespace
