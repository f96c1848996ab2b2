#include "switch/chip/mdio.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace
{

int request_from_kernel(void * /*context*/, unsigned long number, MDIO_Record *record)
{
    const int node = open("/dev/mdio", O_RDWR);
    if (node < 0) {
        printf("couldn't open node");
        return node;
    }
    const int result = ioctl(node, number, record);
    if (result < 0) {
        printf("ioctl failed");
    }
    close(node);
    return result;
}

constexpr MDIO_Handler KERNEL_DEVICE = {request_from_kernel, nullptr};

/* Process-wide, like the bus itself. */
constinit MDIO_Handler current_handler = KERNEL_DEVICE;

MDIO_Record make_record(uint32_t phyAddress, uint8_t operation, uint32_t registerNumber,
                        uint32_t value)
{
    return {static_cast<uint8_t>(phyAddress), operation, static_cast<uint8_t>(registerNumber), 0,
            value};
}

} // namespace

MDIO_Handler MDIO_Install(MDIO_Handler handler)
{
    return std::exchange(current_handler, handler.request != nullptr ? handler : KERNEL_DEVICE);
}

int MDIO_Request(unsigned long number, MDIO_Record *record)
{
    return current_handler.request(current_handler.context, number, record);
}

int MDIO_Bus_Read(SW_Device * /*device*/, uint32_t phyAddress, uint32_t registerNumber,
                  uint32_t *value)
{
    MDIO_Record record = make_record(phyAddress, MDIO_READ, registerNumber, 0);
    MDIO_Request(MDIO_REQUEST, &record);
    *value = record.value;
    return 1;
}

int MDIO_Bus_Write(SW_Device * /*device*/, uint32_t phyAddress, uint32_t registerNumber,
                   uint32_t value)
{
    MDIO_Record record = make_record(phyAddress, MDIO_WRITE, registerNumber, value);
    MDIO_Request(MDIO_REQUEST, &record);
    return 1;
}
