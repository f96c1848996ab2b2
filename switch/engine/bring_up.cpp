#include "switch/engine/bring_up.h"

#include "switch/chip/driver.h"
#include "switch/chip/mdio.h"
#include "switch/engine/frame_size.h"
#include "switch/engine/wait.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

uint32_t SW_Mem_Mapped = 0;

namespace
{

constexpr uint32_t QUIET_WAIT = 100000; /* microseconds */
constexpr uint32_t REINIT_WAIT = 1000000;

/* Meant: the driver's CPU port is 3, although the port named "CPU" is chip port 2. */
constexpr uint8_t DRIVER_CPU_PORT = 3;
constexpr uint32_t SMI_BASE_ADDRESS = 16;

/* By driver port. Meant: one port more than the board uses. */
constexpr uint32_t PORT_SPEED_MODES[] = {
    SPEED_AUTO_DUPLEX_AUTO, SPEED_AUTO_DUPLEX_AUTO, SPEED_100_DUPLEX_FULL,
    SPEED_AUTO_DUPLEX_AUTO, SPEED_AUTO_DUPLEX_AUTO, SPEED_AUTO_DUPLEX_AUTO,
};

/* The PHY register that chooses the function of the LEDs; its low four bits are the first LED's. */
constexpr uint32_t LED_PAGE = 3;
constexpr uint32_t LED_REGISTER = 16;
constexpr uint16_t FIRST_LED = 0x000F;
constexpr uint16_t FIRST_LED_FUNCTION = 0x000E;
constexpr int LED_PORTS[] = {1, 2};

void fill_sys_config(SW_Sys_Config *config)
{
    *config = {};
    config->cpuPort = DRIVER_CPU_PORT;
    config->initPorts = 1;
    config->hooks.readRegister = MDIO_Bus_Read;
    config->hooks.writeRegister = MDIO_Bus_Write;
    config->address = SMI_BASE_ADDRESS;
}

void print_chip(const SW_Device &device)
{
    printf("...done.\n"
           "Marvell switch init success!\n"
           "Device ID     : 0x%x\n"
           "Base Reg Addr : 0x%x\n"
           "No of Ports   : %d\n"
           "CPU Port      : %u\n",
           device.deviceId, static_cast<unsigned>(device.baseRegAddr), device.numberOfPorts,
           device.cpuPort);
}

int enable(SW_Device *device)
{
    const int status = swSysEnable(device);
    if (status != SW_STATUS_OK) {
        printf("sysConfig return Failed\n");
    }
    return status;
}

int set_frame_size(SW_Device *device)
{
    const int status = swSetMaxFrameSize(device, DriverFrameSize(SW_Max_Frame_Size_1632));
    if (status != SW_STATUS_OK) {
        printf("...Set Max Frame Size! Error:%d\n", status);
    }
    return status;
}

int print_frame_size(SW_Device *device)
{
    uint32_t size = 0;
    const int status = swGetMaxFrameSize(device, &size);
    if (status != SW_STATUS_OK) {
        printf("...Get Max Frame Size! Error:%d\n", status);
    } else {
        printf("MaxFrameSize  : %s\n", MaxFrameSizeDisplayText(ConfigFrameSize(size)));
    }
    return status;
}

void set_led_function(SW_Device *device, uint32_t chipPort)
{
    uint16_t value = 0;
    swReadPagedPhyReg(device, chipPort, LED_REGISTER, LED_PAGE, &value);
    value = static_cast<uint16_t>((value & ~FIRST_LED) | FIRST_LED_FUNCTION);
    swWritePagedPhyReg(device, chipPort, LED_REGISTER, LED_PAGE, value);
}

} // namespace

int SW_Init(SW_Control *control, bool verbose)
{
    fill_sys_config(control->sysConfig);
    *control->device = {};
    if (verbose) {
        printf("Try load marvell switch driver...");
    } else {
        SW_Wait(QUIET_WAIT);
    }
    const int status = swLoadDriver(control->sysConfig, control->device);
    if (status != SW_STATUS_OK) {
        printf("...load driver failed! Error:%d\n", status);
        return status;
    }
    if (verbose) {
        print_chip(*control->device);
    } else {
        SW_Wait(QUIET_WAIT);
    }
    return enable(control->device);
}

int SW_Init_Quiet(SW_Control *control)
{
    return SW_Init(control, false);
}

int SW_Init_Ports(SW_Control *control)
{
    uint32_t port = 0;
    for (const uint32_t mode : PORT_SPEED_MODES) {
        swSetPortAutoMode(control->device, port++, mode);
    }
    int status = set_frame_size(control->device);
    if (status == SW_STATUS_OK) {
        status = print_frame_size(control->device);
    }
    if (status != SW_STATUS_OK) {
        return status;
    }
    for (const int index : LED_PORTS) {
        set_led_function(control->device, static_cast<uint32_t>(SW_Chip_Ports[index]));
    }
    return SW_STATUS_OK;
}

int SW_ReInit(SW_Control *control)
{
    SW_Wait(REINIT_WAIT);
    const int driver_status = SW_Init(control, true);
    const int port_status = SW_Init_Ports(control);
    return driver_status == SW_STATUS_OK && port_status == SW_STATUS_OK ? 0 : -1;
}

void SW_Read_Max_Frame_Size(SW_Control *control)
{
    uint32_t *image = &control->deviceImage->maxFrameSize;
    if (control->read != 0) {
        uint32_t size = 0;
        const int status = swGetMaxFrameSize(control->device, &size);
        if (status == SW_STATUS_OK) {
            *image = ConfigFrameSize(size);
        } else if (control->print != 0) {
            printf("...Get Max Frame Size! Error:%d\n", status);
        }
    }
    if (control->print != 0) {
        printf("Max Frame Size: %s\n", MaxFrameSizeDisplayText(*image));
    }
}

int SW_Open_Dev_Mem()
{
    if (SW_Mem_Mapped != 0) {
        return 0;
    }
    const int memory = open("/dev/mem", O_RDWR | O_DSYNC);
    if (memory < 0) {
        printf("Switch: Cannot open /dev/mem.\n");
        return -1;
    }
    close(memory);
    return 0;
}
