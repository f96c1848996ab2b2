#include "switch/engine/bring_up.h"

#include "switch/chip/mdio.h"
#include "tests/switch/engine/board.h"

#include <cstring>
#include <iterator>
#include <vector>

namespace
{

/* Identification, forwarding on every port, then the blocks of the chip's family. */
constexpr const char *LOAD_TRACE = "R 10 03 1052\n"
                                   "R 10 04 0030\nW 10 04 0033\n"
                                   "R 11 04 0030\nW 11 04 0033\n"
                                   "R 12 04 0030\nW 12 04 0033\n"
                                   "R 13 04 0030\nW 13 04 0033\n"
                                   "R 14 04 0030\nW 14 04 0033\n"
                                   "R 15 04 0030\nW 15 04 0033\n"
                                   "R 1b 04 0000\n"
                                   "R 10 04 0033\nR 11 04 0033\nR 12 04 0033\n"
                                   "R 13 04 0033\nR 14 04 0033\nR 15 04 0033\n";

/* Speeds of ports 0 to 2 (the others have no PHY), frame size, LEDs of LAN and WAN. */
constexpr const char *PORTS_TRACE =
    "R 00 02 5349\nR 00 03 b5a1\nR 00 01 796d\nR 00 0f 3000\n"
    "R 00 04 01e1\nW 00 04 01e1\nR 00 09 0300\nW 00 09 0300\nR 00 00 1140\nW 00 00 1340\n"
    "R 01 02 5349\nR 01 03 b5a1\nR 01 01 796d\nR 01 0f 3000\n"
    "R 01 04 01e1\nW 01 04 01e1\nR 01 09 0300\nW 01 09 0300\nR 01 00 1140\nW 01 00 1340\n"
    "R 02 02 5349\nR 02 03 b5a1\nR 02 01 796d\nR 02 0f 3000\n"
    "R 02 04 01e1\nW 02 04 0101\nR 02 09 0300\nW 02 09 0000\nR 02 00 1140\nW 02 00 1340\n"
    "R 1b 04 0000\nW 1b 04 0400\n"
    "R 1b 04 0400\n"
    "R 01 16 0000\nW 01 16 0003\nR 01 10 1021\nW 01 16 0000\n"
    "R 01 16 0000\nW 01 16 0003\nW 01 10 102e\nW 01 16 0000\n"
    "R 00 16 0000\nW 00 16 0003\nR 00 10 1021\nW 00 16 0000\n"
    "R 00 16 0000\nW 00 16 0003\nW 00 10 102e\nW 00 16 0000\n";

constexpr const char *VERBOSE_TEXT = "Try load marvell switch driver......done.\n"
                                     "Marvell switch init success!\n"
                                     "Device ID     : 0x105\n"
                                     "Base Reg Addr : 0x10\n"
                                     "No of Ports   : 6\n"
                                     "CPU Port      : 3\n";

constexpr uint32_t EVERY_PORT_SPEED_CALL = 30;

struct Wait_Places {
    const Sim_Recorder *recorder;
    std::vector<size_t> accesses_before;
};

void keep_place(void *context, uint32_t /*microseconds*/)
{
    auto *places = static_cast<Wait_Places *>(context);
    places->accesses_before.push_back(places->recorder->records.size());
}

class BringUp : public Board
{
protected:
    /* How many register accesses of the call stand before each of its waits. */
    template <class Call>
    std::vector<size_t> accesses_before_waits(Call call)
    {
        Wait_Places places = {&recorder_, {}};
        const SW_Wait_Handler before = SW_Install_Wait({keep_place, &places});
        call();
        SW_Install_Wait(before);
        return places.accesses_before;
    }

    /* Runs the call and gives what it returns and prints. */
    template <class Call>
    std::string run(Call call)
    {
        return printed([&] { result_ = call(); });
    }

    int result_ = 12345;
};

TEST_F(BringUp, QuietPrintsNothingAndWaitsTwice)
{
    EXPECT_EQ(run([&] { return SW_Init_Quiet(&control_); }), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(waits_, (std::vector<uint32_t>{100000, 100000}));
}

TEST_F(BringUp, QuietWaitsBeforeAndBehindTheLoad)
{
    EXPECT_EQ(accesses_before_waits([&] { SW_Init_Quiet(&control_); }),
              (std::vector<size_t>{0, 20}));
}

TEST_F(BringUp, ReInitWaitsBeforeEverything)
{
    EXPECT_EQ(accesses_before_waits([&] { run([&] { return SW_ReInit(&control_); }); }),
              (std::vector<size_t>{0}));
}

TEST_F(BringUp, QuietLoadsTheDriverAndLeavesTheRestOfTheChipAlone)
{
    SW_Init_Quiet(&control_);
    EXPECT_EQ(take_trace(), LOAD_TRACE);
    EXPECT_EQ(chip_.global[4], 0);
    EXPECT_EQ(chip_.phys[1].pages[3][16], 0x1021);
}

TEST_F(BringUp, QuietTakesTwentyAccesses)
{
    SW_Init_Quiet(&control_);
    EXPECT_EQ(take_access_count(), 20U);
}

TEST_F(BringUp, FillsTheConfigurationRecord)
{
    std::memset(&sys_config_, 0xFF, sizeof sys_config_);
    SW_Init_Quiet(&control_);
    EXPECT_EQ(sys_config_.deviceNumber, 0);
    EXPECT_EQ(sys_config_.cpuPort, 3);
    EXPECT_EQ(sys_config_.initPorts, 1U);
    EXPECT_EQ(sys_config_.hooks.reserved, 0U);
    EXPECT_EQ(sys_config_.hooks.readRegister, &MDIO_Bus_Read);
    EXPECT_EQ(sys_config_.hooks.writeRegister, &MDIO_Bus_Write);
    EXPECT_EQ(sys_config_.hooks.lockCreate, nullptr);
    EXPECT_EQ(sys_config_.hooks.lockDelete, nullptr);
    EXPECT_EQ(sys_config_.hooks.lockTake, nullptr);
    EXPECT_EQ(sys_config_.hooks.lockGive, nullptr);
    EXPECT_EQ(sys_config_.accessMode, 0U);
    EXPECT_EQ(sys_config_.address, 16U);
    EXPECT_EQ(sys_config_.skipWord, 0U);
}

TEST_F(BringUp, LeavesTheConfigurationsAlone)
{
    SetSwitchConfigDefaults(&running_);
    const SW_Config before = running_;
    SW_Init_Quiet(&control_);
    EXPECT_EQ(std::memcmp(&running_, &before, sizeof before), 0);
    EXPECT_EQ(applied_.maxFrameSize, 0U);
}

TEST_F(BringUp, MayBeRepeated)
{
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(run([&] { return SW_Init_Quiet(&control_); }), "");
        EXPECT_EQ(result_, 0);
    }
    EXPECT_EQ(waits_.size(), 6U);
}

TEST_F(BringUp, VerbosePrintsWhatTheDriverLearntAndDoesNotWait)
{
    EXPECT_EQ(run([&] { return SW_Init(&control_, true); }), VERBOSE_TEXT);
    EXPECT_EQ(result_, 0);
    EXPECT_TRUE(waits_.empty());
    EXPECT_EQ(take_trace(), LOAD_TRACE);
}

struct Load_Failure_Row {
    const char *name;
    uint16_t identifier;
    bool silent_bus; /* every request fails */
    int status;
    const char *line;
};

void PrintTo(const Load_Failure_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Load_Failure_Row LOAD_FAILURES[] = {
    {"NobodyAnswers", 0x105, true, 1, "...load driver failed! Error:1\n"},
    {"CpuPortIsNotThere", 0x250, false, 32, "...load driver failed! Error:32\n"},
};

class LoadFailure : public BringUp, public testing::WithParamInterface<Load_Failure_Row>
{
protected:
    void SetUp() override
    {
        use_chip(GetParam().identifier);
        if (GetParam().silent_bus) {
            ASSERT_TRUE(
                Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}));
        }
    }
};

TEST_P(LoadFailure, QuietPrintsTheLineAndWaitsOnce)
{
    EXPECT_EQ(run([&] { return SW_Init_Quiet(&control_); }), GetParam().line);
    EXPECT_EQ(result_, GetParam().status);
    EXPECT_EQ(waits_, (std::vector<uint32_t>{100000}));
}

TEST_P(LoadFailure, VerbosePrintsItOnTheLineOfTheAnnouncement)
{
    EXPECT_EQ(run([&] { return SW_Init(&control_, true); }),
              std::string("Try load marvell switch driver...") + GetParam().line);
    EXPECT_EQ(result_, GetParam().status);
}

TEST_P(LoadFailure, ReInitStillPreparesThePortsWhichFailToo)
{
    EXPECT_EQ(run([&] { return SW_ReInit(&control_); }),
              std::string("Try load marvell switch driver...") + GetParam().line +
                  "...Set Max Frame Size! Error:1\n");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(waits_, (std::vector<uint32_t>{1000000}));
}

TEST_P(LoadFailure, IsForgottenByTheNextBringUp)
{
    run([&] { return SW_Init_Quiet(&control_); });
    Sim_Faults_Clear(&faults_);
    use_chip(0x105);
    EXPECT_EQ(run([&] { return SW_Init_Quiet(&control_); }), "");
    EXPECT_EQ(result_, 0);
}

INSTANTIATE_TEST_SUITE_P(BringUp, LoadFailure, testing::ValuesIn(LOAD_FAILURES),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(BringUp, ReInitWaitsASecondAndDoesBothStages)
{
    EXPECT_EQ(run([&] { return SW_ReInit(&control_); }),
              std::string(VERBOSE_TEXT) + "MaxFrameSize  : 1632 Bytes\n");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(waits_, (std::vector<uint32_t>{1000000}));
    EXPECT_EQ(take_trace(), std::string(LOAD_TRACE) + PORTS_TRACE);
    EXPECT_EQ(chip_.global[4], 0x0400);
    EXPECT_EQ(chip_.phys[0].pages[3][16], 0x102E);
    EXPECT_EQ(chip_.phys[1].pages[3][16], 0x102E);
    EXPECT_EQ(chip_.phys[2].pages[3][16], 0x1021);
}

TEST_F(BringUp, ReInitFailsWhereOnlyThePortsDo)
{
    use_chip(0x165); /* without a global frame size */
    EXPECT_EQ(run([&] { return SW_ReInit(&control_); }),
              "Try load marvell switch driver......done.\n"
              "Marvell switch init success!\n"
              "Device ID     : 0x165\n"
              "Base Reg Addr : 0x10\n"
              "No of Ports   : 6\n"
              "CPU Port      : 3\n"
              "...Set Max Frame Size! Error:16\n");
    EXPECT_EQ(result_, -1);
}

TEST_F(BringUp, ReInitTakesSixtyNineAccesses)
{
    run([&] { return SW_ReInit(&control_); });
    EXPECT_EQ(take_access_count(), 69U);
}

TEST_F(BringUp, ReInitMayBeRepeated)
{
    for (int time = 0; time < 3; ++time) {
        run([&] { return SW_ReInit(&control_); });
        EXPECT_EQ(result_, 0);
    }
}

TEST_F(BringUp, ReInitSetsLargeFramesWhateverTheConfigurationSays)
{
    running_.maxFrameSize = 0;
    run([&] { return SW_ReInit(&control_); });
    EXPECT_EQ(chip_.global[4], 0x0400);
    EXPECT_EQ(running_.maxFrameSize, 0U);
}

TEST_F(BringUp, LedFunctionKeepsTheOtherBits)
{
    bring_up();
    chip_.phys[0].pages[3][16] = 0xABC5;
    chip_.phys[1].pages[3][16] = 0x000F;
    run([&] { return SW_Init_Ports(&control_); });
    EXPECT_EQ(chip_.phys[0].pages[3][16], 0xABCE);
    EXPECT_EQ(chip_.phys[1].pages[3][16], 0x000E);
}

TEST_F(BringUp, PortSpeedsReachDriverPortFiveAndNoFurther)
{
    use_chip(0x106); /* eight ports, all with a PHY */
    bring_up();
    for (Sim_Phy &phy : chip_.phys) {
        phy.advertisement = 0;
    }
    run([&] { return SW_Init_Ports(&control_); });
    constexpr uint16_t advertised[] = {0x01E0, 0x01E0, 0x0100, 0x01E0, 0x01E0, 0x01E0, 0, 0};
    for (size_t port = 0; port < std::size(advertised); ++port) {
        EXPECT_EQ(chip_.phys[port].advertisement, advertised[port]) << port;
    }
}

TEST_F(BringUp, FrameSizeIsShownAsTheChipReportsIt)
{
    bring_up();
    chip_.global[4] = 0;
    /* Unseen by the driver, the write of the frame size does not reach the chip. */
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 2, 1, 0x1B, 4}));
    EXPECT_EQ(run([&] { return SW_Init_Ports(&control_); }), "MaxFrameSize  : 1522 Bytes\n");
    EXPECT_EQ(result_, 0);
}

struct Port_Failure_Row {
    const char *name;
    uint32_t first; /* hook calls, counted from the first port speed */
    uint32_t count;
    int result;
    const char *text;
};

void PrintTo(const Port_Failure_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Port_Failure_Row PORT_FAILURES[] = {
    {"FirstPortSpeedIsSilent", 0, 1, 0, "MaxFrameSize  : 1632 Bytes\n"},
    {"LastPortSpeedIsSilent", EVERY_PORT_SPEED_CALL - 1, 1, 0, "MaxFrameSize  : 1632 Bytes\n"},
    {"ReadBeforeTheFrameSizeIsSet", EVERY_PORT_SPEED_CALL, 1, 1,
     "...Set Max Frame Size! Error:1\n"},
    {"WriteOfTheFrameSize", EVERY_PORT_SPEED_CALL + 1, 1, 1, "...Set Max Frame Size! Error:1\n"},
    {"ReadOfTheFrameSize", EVERY_PORT_SPEED_CALL + 2, 1, 1, "...Get Max Frame Size! Error:1\n"},
    {"LedAccessesAreSilent", EVERY_PORT_SPEED_CALL + 3, 1000, 0, "MaxFrameSize  : 1632 Bytes\n"},
};

class PortFailure : public BringUp, public testing::WithParamInterface<Port_Failure_Row>
{
};

TEST_P(PortFailure, ShowsOnlyAtTheFrameSize)
{
    bring_up();
    Hook_Faults hooks(&device_);
    hooks.break_calls(GetParam().first, GetParam().count);
    EXPECT_EQ(run([&] { return SW_Init_Ports(&control_); }), GetParam().text);
    EXPECT_EQ(result_, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(BringUp, PortFailure, testing::ValuesIn(PORT_FAILURES),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(BringUp, FailedFrameSizeEndsThePreparationBeforeTheLeds)
{
    for (const size_t call : {0U, 1U, 2U}) {
        bring_up();
        Hook_Faults hooks(&device_);
        hooks.break_calls(EVERY_PORT_SPEED_CALL + call);
        run([&] { return SW_Init_Ports(&control_); });
        EXPECT_EQ(hooks.calls(), EVERY_PORT_SPEED_CALL + call + 1);
    }
}

TEST_F(BringUp, LedWriteFollowsAFailedReadWithZeroInTheOtherBits)
{
    bring_up();
    Hook_Faults hooks(&device_);
    hooks.break_calls(EVERY_PORT_SPEED_CALL + 3);
    run([&] { return SW_Init_Ports(&control_); });
    EXPECT_EQ(chip_.phys[1].pages[3][16], 0x000E);
    EXPECT_EQ(chip_.phys[0].pages[3][16], 0x102E);
}

struct Image_Row {
    const char *name;
    uint32_t read;
    uint32_t print;
    bool failing;
    uint16_t control; /* the chip's register */
    uint32_t before;  /* of the image */
    uint32_t after;
    const char *text;
};

void PrintTo(const Image_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Image_Row IMAGES[] = {
    {"ReadAndPrintLarge", 1, 1, false, 0x0400, 0, 1, "Max Frame Size: 1632 Bytes\n"},
    {"ReadAndPrintSmall", 1, 1, false, 0x0000, 1, 0, "Max Frame Size: 1522 Bytes\n"},
    {"ReadOnly", 1, 0, false, 0x0400, 0, 1, ""},
    {"PrintOnly", 0, 1, false, 0x0400, 0, 0, "Max Frame Size: 1522 Bytes\n"},
    {"PrintOnlyOtherNumber", 0, 1, false, 0, 7, 7, "Max Frame Size: 1632 Bytes\n"},
    {"Neither", 0, 0, false, 0x0400, 0, 0, ""},
    {"FailureIsShownWithTheOldImage", 1, 1, true, 0, 1, 1,
     "...Get Max Frame Size! Error:1\nMax Frame Size: 1632 Bytes\n"},
    {"FailureIsSilentWithoutPrint", 1, 0, true, 0, 1, 1, ""},
};

class FrameSizeImage : public BringUp, public testing::WithParamInterface<Image_Row>
{
};

TEST_P(FrameSizeImage, FollowsBothFlags)
{
    const Image_Row &row = GetParam();
    bring_up();
    chip_.global[4] = row.control;
    device_image_.maxFrameSize = row.before;
    control_.read = row.read;
    control_.print = row.print;
    Hook_Faults hooks(&device_);
    hooks.break_calls(0, row.failing ? 1 : 0);
    EXPECT_EQ(printed([&] { SW_Read_Max_Frame_Size(&control_); }), row.text);
    EXPECT_EQ(device_image_.maxFrameSize, row.after);
    EXPECT_EQ(hooks.calls(), row.read);
}

INSTANTIATE_TEST_SUITE_P(BringUp, FrameSizeImage, testing::ValuesIn(IMAGES),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
