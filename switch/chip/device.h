#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/*
 * The records, statuses and values of the switch driver. One device record describes one switch
 * chip; every driver operation takes it first and returns a status. The driver belongs to a single
 * thread; a host with several installs lock hooks, which the driver takes around every access.
 */

/* What every driver operation returns. */
inline constexpr int SW_STATUS_OK = 0;
inline constexpr int SW_STATUS_FAIL = 1;            /* bus access failed, or value out of range */
inline constexpr int SW_STATUS_BAD_PARAM = 4;       /* missing pointer, no such port, bad entry */
inline constexpr int SW_STATUS_NOT_SUPPORTED = 16;  /* the loaded chip does not have it */
inline constexpr int SW_STATUS_ALREADY_LOADED = 27; /* load of a record that is loaded */
inline constexpr int SW_STATUS_BAD_CPU_PORT = 32;   /* load: the CPU port is no port of the chip */

/* 802.1Q mode of a port. */
inline constexpr uint32_t GT_DISABLE = 0;
inline constexpr uint32_t GT_FALLBACK = 1;
inline constexpr uint32_t GT_CHECK = 2;
inline constexpr uint32_t GT_SECURE = 3;

/* Egress tagging mode of a port. */
inline constexpr uint32_t GT_UNMODIFY_EGRESS = 0;
inline constexpr uint32_t GT_UNTAGGED_EGRESS = 1;
inline constexpr uint32_t GT_TAGGED_EGRESS = 2;
inline constexpr uint32_t GT_ADD_TAG = 3;

/* Rate codes: bits per second. Binary steps below 1M, decimal ones from there: meant. */
inline constexpr uint32_t GT_NO_LIMIT = 0;
inline constexpr uint32_t GT_128K = 1;
inline constexpr uint32_t GT_256K = 2;
inline constexpr uint32_t GT_512K = 3;
inline constexpr uint32_t GT_1M = 4;
inline constexpr uint32_t GT_2M = 5;
inline constexpr uint32_t GT_4M = 6;
inline constexpr uint32_t GT_8M = 7;
inline constexpr uint32_t GT_16M = 8;
inline constexpr uint32_t GT_32M = 9;
inline constexpr uint32_t GT_64M = 10;
inline constexpr uint32_t GT_128M = 11;
inline constexpr uint32_t GT_256M = 12;

/* Speed codes of a link. */
inline constexpr uint32_t SW_SPEED_10 = 0;
inline constexpr uint32_t SW_SPEED_100 = 1;
inline constexpr uint32_t SW_SPEED_1000 = 2;
inline constexpr uint32_t SW_SPEED_UNKNOWN = 3;

/* Register access mode through the chip's command registers; every other value is direct. */
inline constexpr uint32_t SW_ACCESS_INDIRECT = 2;

/* A mirror destination that stands for no port. */
inline constexpr uint32_t SW_MIRROR_NONE = 15;

/* Given as the configuration's skip word, leaves the load's family set-up steps out. */
inline constexpr uint32_t SW_SKIP_SETUP = 0x736b6970;

/* Bit of SW_Device::state: the last rate written or read was none of the rate codes. */
inline constexpr uint32_t SW_STATE_RATE_UNKNOWN = 1U << 16;

struct SW_Device;

/* A lock as the lock-create hook gave it; 0 is none. Without that hook every lock is 1. */
using SW_Lock = uintptr_t;

/*
 * The hook block. The two register hooks answer 1 (true) or 0 (false: status 1 of the operation);
 * both are needed. Lock hooks may be null: then creating yields 1, and taking and giving succeed.
 * The take hook answers 1 when the lock was taken within the time-out, 0 when not (status 1 of the
 * operation, nothing touched).
 */
struct SW_Hooks {
    uint32_t reserved; /* 0 */
    int (*readRegister)(SW_Device *device, uint32_t address, uint32_t number, uint32_t *value);
    int (*writeRegister)(SW_Device *device, uint32_t address, uint32_t number, uint32_t value);
    SW_Lock (*lockCreate)(uint32_t initialState);
    int (*lockDelete)(SW_Lock lock);
    int (*lockTake)(SW_Lock lock, uint32_t timeOut);
    int (*lockGive)(SW_Lock lock);
};

/* What the load operation takes. Filled by the host; every field that is not used is 0. */
struct SW_Sys_Config {
    uint8_t deviceNumber;
    uint8_t cpuPort;    /* must be a port of the chip */
    uint32_t initPorts; /* 1: the load switches every port to forwarding */
    SW_Hooks hooks;
    uint32_t accessMode; /* SW_ACCESS_INDIRECT or direct */
    uint32_t address;    /* direct: base address of the older chips; indirect: the chip's own */
    uint32_t skipWord;   /* SW_SKIP_SETUP leaves the family set-up steps out */
};

/* The locks of a device record. Operations take the first three; all are created and deleted. */
enum SW_Lock_Index : uint8_t {
    SW_LOCK_REGISTER, /* around every register access, and a field's read and write together */
    SW_LOCK_VTU,      /* around every VLAN-table operation */
    SW_LOCK_PHY,      /* around every PHY operation */
    SW_LOCK_COUNT = 10
};

/*
 * The device record: zeroed by the host, filled by swLoadDriver, read by everybody, changed by the
 * driver alone. A zeroed record has no ports and no hooks, so that operations on it fail with their
 * statuses.
 */
struct SW_Device {
    uint32_t deviceId; /* as read from the chip */
    uint32_t cpuPort;
    uint8_t baseRegAddr;    /* 0 in indirect mode */
    uint8_t numberOfPorts;  /* as many as validPortMask has bits */
    uint16_t validPortMask; /* bit n: hardware port n is there */
    uint16_t phyPortMask;   /* bit n: hardware port n has a PHY */
    uint8_t smiAddress;     /* the chip's own SMI address in indirect mode, else 0 */
    uint8_t deviceNumber;
    uint32_t familyA; /* family sets: a chip has one bit in one of them */
    uint32_t familyB;
    uint32_t accessMode;
    uint32_t state;  /* SW_STATE_... */
    uint32_t loaded; /* 1 after a successful load */
    SW_Hooks hooks;
    SW_Lock locks[SW_LOCK_COUNT];
};

static_assert(std::is_trivially_copyable_v<SW_Device> &&
              std::is_trivially_copyable_v<SW_Sys_Config>);
static_assert(offsetof(SW_Device, deviceId) == 0 && offsetof(SW_Device, cpuPort) == 4);
static_assert(offsetof(SW_Device, baseRegAddr) == 8 && offsetof(SW_Device, numberOfPorts) == 9);
