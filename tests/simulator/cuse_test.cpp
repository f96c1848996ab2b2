/* The device server without a kernel: the test speaks the kernel's part of CUSE over a socket. */

#include "simulator/cuse.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <linux/fuse.h>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace
{

using Bytes = std::string;

template <class Record>
Bytes bytes_of(const Record &record)
{
    return {reinterpret_cast<const char *>(&record), sizeof record};
}

template <class Record>
Record record_of(const Bytes &bytes)
{
    Record record = {};
    EXPECT_GE(bytes.size(), sizeof record);
    std::memcpy(&record, bytes.data(), std::min(bytes.size(), sizeof record));
    return record;
}

struct Answer {
    int error; /* 0 or negative, as the protocol has it */
    Bytes rest;
};

class CuseServer : public testing::Test
{
protected:
    void SetUp() override
    {
        int ends[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
        kernel = ends[0];
        ASSERT_TRUE(Sim_Device_Up(device.get(), Sim_Board_Chip(), {SIM_DIRECT, 16}, nullptr));
        ASSERT_TRUE(Sim_Cuse_Start(&cuse, device.get(), "mdio", ends[1]));
        EXPECT_EQ(Sim_Cuse_Descriptor(cuse), ends[1]);
    }
    void TearDown() override
    {
        Sim_Cuse_Stop(&cuse);
        Sim_Device_Down(device.get());
        close(kernel);
    }

    /* One call of the kernel and how the server's step for it ended. */
    Sim_Cuse_Step step(uint32_t operation, const Bytes &body)
    {
        fuse_in_header header = {};
        header.len = static_cast<uint32_t>(sizeof header + body.size());
        header.opcode = operation;
        header.unique = ++calls;
        const Bytes message = bytes_of(header) + body;
        EXPECT_EQ(send(kernel, message.data(), message.size(), 0),
                  static_cast<ssize_t>(message.size()));
        return Sim_Cuse_Serve(&cuse);
    }
    Answer answer() const
    {
        Bytes message(65536, '\0');
        const ssize_t got = recv(kernel, message.data(), message.size(), MSG_DONTWAIT);
        message.resize(got < 0 ? 0 : static_cast<size_t>(got));
        const auto header = record_of<fuse_out_header>(message);
        EXPECT_EQ(header.len, message.size());
        EXPECT_EQ(header.unique, calls);
        return {header.error, message.substr(std::min(message.size(), sizeof header))};
    }
    Answer call(uint32_t operation, const Bytes &body)
    {
        EXPECT_EQ(step(operation, body), SIM_CUSE_GOES_ON);
        return answer();
    }
    void initialise()
    {
        cuse_init_in in = {};
        in.major = FUSE_KERNEL_VERSION;
        in.minor = 31;
        initialised = call(CUSE_INIT, bytes_of(in));
    }
    static Bytes ioctl_body(uint32_t number, const Bytes &argument)
    {
        fuse_ioctl_in in = {};
        in.cmd = number;
        in.in_size = static_cast<uint32_t>(argument.size());
        in.out_size = static_cast<uint32_t>(argument.size());
        return bytes_of(in) + argument;
    }
    Answer request(const MDIO_Record &record, uint32_t number = MDIO_REQUEST)
    {
        return call(FUSE_IOCTL, ioctl_body(number, bytes_of(record)));
    }
    static Bytes open_body() { return bytes_of(fuse_open_in{}); }
    static Bytes release_body() { return bytes_of(fuse_release_in{}); }

    const std::unique_ptr<Sim_Device> device = std::make_unique<Sim_Device>();
    Sim_Cuse cuse = {};
    Answer initialised = {};
    int kernel = -1;
    uint64_t calls = 0;
};

TEST_F(CuseServer, AsksForTheNodeInRestrictedMode)
{
    EXPECT_FALSE(cuse.ready);
    initialise();
    EXPECT_TRUE(cuse.ready);
    EXPECT_EQ(initialised.error, 0);
    const auto out = record_of<cuse_init_out>(initialised.rest);
    EXPECT_EQ(out.flags & CUSE_UNRESTRICTED_IOCTL, 0U);
    EXPECT_EQ(initialised.rest.substr(sizeof out), Bytes("DEVNAME=mdio\0", 13));
}

TEST_F(CuseServer, CarriesOutRequestsOnTheRecord)
{
    initialise();
    EXPECT_EQ(call(FUSE_OPEN, open_body()).error, 0);
    const Answer read = request({0x10, MDIO_READ, 3, 0, 0});
    EXPECT_EQ(read.error, 0);
    const auto out = record_of<fuse_ioctl_out>(read.rest);
    EXPECT_EQ(out.result, 0);
    EXPECT_EQ(out.flags, 0U) << "no second round";
    EXPECT_EQ(read.rest.substr(sizeof out), bytes_of(MDIO_Record{0x10, MDIO_READ, 3, 0, 0x1052}));
    EXPECT_EQ(request({0x11, MDIO_WRITE, 7, 0, 0x0123}).error, 0);
    EXPECT_EQ(device->chip.ports[1][7], 0x0123);
    EXPECT_EQ(call(FUSE_RELEASE, release_body()).error, 0);
    EXPECT_EQ(device->counts.opens, 1U);
    EXPECT_EQ(device->counts.requests, 2U);
    EXPECT_EQ(device->counts.closes, 1U);
}

TEST_F(CuseServer, HandsErrorsToTheClient)
{
    initialise();
    ASSERT_TRUE(
        Sim_Faults_Add(&device->faults, {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY, ETIMEDOUT}));
    EXPECT_EQ(request({0x10, MDIO_READ, 3, 0, 0}).error, -ETIMEDOUT);
    EXPECT_EQ(request({0x10, 2, 3, 0, 0}).error, -EINVAL);
    EXPECT_EQ(request({0x10, MDIO_READ, 3, 0, 0}, MDIO_REQUEST + 1).error, -ENOTTY);
    EXPECT_EQ(call(FUSE_IOCTL, ioctl_body(0x5401, "")).error, -ENOTTY) << "without a record";
    EXPECT_EQ(call(FUSE_IOCTL, ioctl_body(0x5401, Bytes(300, 'x'))).error, -ENOTTY);
    EXPECT_EQ(device->counts.failed, 5U);
    EXPECT_EQ(request({0x10, MDIO_READ, 3, 0, 0}).error, 0);
}

TEST_F(CuseServer, AnswersAReadWithTheEndOfFile)
{
    initialise();
    fuse_read_in in = {};
    in.size = 4096;
    const Answer read = call(FUSE_READ, bytes_of(in));
    EXPECT_EQ(read.error, 0);
    EXPECT_EQ(read.rest, "");
}

TEST_F(CuseServer, RefusesWrites)
{
    initialise();
    fuse_write_in in = {};
    in.size = 4;
    EXPECT_EQ(call(FUSE_WRITE, bytes_of(in) + "text").error, -ENOSYS);
}

TEST_F(CuseServer, TellsWhenTheDeviceIsToVanish)
{
    initialise();
    device->lastRequest = 1;
    call(FUSE_OPEN, open_body());
    request({0x10, MDIO_READ, 3, 0, 0});
    EXPECT_EQ(call(FUSE_OPEN, open_body()).error, -ENODEV);
    EXPECT_EQ(step(FUSE_RELEASE, release_body()), SIM_CUSE_GONE);
    EXPECT_EQ(answer().error, 0) << "the client's close is answered first";
}

TEST_F(CuseServer, TellsWhenTheSessionCannotGoOn)
{
    initialise();
    shutdown(kernel, SHUT_WR);
    EXPECT_EQ(Sim_Cuse_Serve(&cuse), SIM_CUSE_LOST);
    EXPECT_EQ(errno, EIO) << "the kernel's end is closed";
}

TEST_F(CuseServer, GivesItsDescriptorBackWhenItStops)
{
    Sim_Cuse_Stop(&cuse);
    char nothing = 0;
    EXPECT_EQ(recv(kernel, &nothing, 1, 0), 0) << "the other end is closed";
    Sim_Cuse_Stop(&cuse);
}

} // namespace
