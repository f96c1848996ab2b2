#include "switch/chip/phy.h"

#include "switch/chip/checks.h"
#include "switch/chip/fields.h"
#include "switch/chip/lock.h"
#include "switch/chip/phy_link.h"
#include "switch/chip/smi.h"

#include <iterator>

/* Registers and bits of IEEE 802.3, 22.2.4 and, of gigabit PHYs, 40.5.1.1. */
namespace
{

constexpr uint8_t CONTROL = 0;
constexpr uint16_t CONTROL_SPEED_HIGH = 0x0040;
constexpr uint16_t CONTROL_FULL = 0x0100;
constexpr uint16_t CONTROL_RESTART = 0x0200;
constexpr uint16_t CONTROL_AUTO = 0x1000;
constexpr uint16_t CONTROL_SPEED_LOW = 0x2000;
constexpr uint8_t STATUS = 1;
constexpr uint16_t STATUS_EXTENDED = 0x0100;
constexpr uint8_t IDENTIFIER_1 = 2;
constexpr uint8_t IDENTIFIER_2 = 3;
constexpr uint8_t ADVERTISEMENT = 4;
constexpr uint8_t PARTNER_ABILITY = 5;
constexpr uint8_t GIGABIT_CONTROL = 9;
constexpr uint8_t GIGABIT_STATUS = 10;
constexpr int GIGABIT_STATUS_SHIFT = 2; /* of the partner's bits against GIGABIT_CONTROL's */
constexpr uint8_t EXTENDED_STATUS = 15;
constexpr uint16_t EXTENDED_GIGABIT = 0x3000;
/* Selects the page that the other registers belong to. */
constexpr uint8_t PAGE = 22;
constexpr uint32_t LAST_REGISTER = 31;

/* Ability bits of the advertisement register and of the 1000BASE-T control register. */
constexpr uint16_t HALF_10 = 0x0020;
constexpr uint16_t FULL_10 = 0x0040;
constexpr uint16_t HALF_100 = 0x0080;
constexpr uint16_t FULL_100 = 0x0100;
constexpr uint16_t BASE_ABILITIES = HALF_10 | FULL_10 | HALF_100 | FULL_100;
constexpr uint16_t HALF_1000 = 0x0100;
constexpr uint16_t FULL_1000 = 0x0200;
constexpr uint16_t GIGABIT_ABILITIES = HALF_1000 | FULL_1000;

/* What a PHY advertises. */
struct Abilities {
    uint16_t base;
    uint16_t gigabit;
};

// clang-format off
constexpr Abilities AUTO_MODES[] = {
    /*  0 */ {BASE_ABILITIES,      GIGABIT_ABILITIES},
    /*  1 */ {0,                   GIGABIT_ABILITIES},
    /*  2 */ {HALF_100 | FULL_100, 0},
    /*  3 */ {HALF_10 | FULL_10,   0},
    /*  4 */ {FULL_10 | FULL_100,  FULL_1000},
    /*  5 */ {HALF_10 | HALF_100,  HALF_1000},
    /*  6 */ {0,                   FULL_1000},
    /*  7 */ {0,                   HALF_1000},
    /*  8 */ {FULL_100,            0},
    /*  9 */ {HALF_100,            0},
    /* 10 */ {FULL_10,             0},
    /* 11 */ {HALF_10,             0},
};
// clang-format on
static_assert(std::size(AUTO_MODES) == 12);

/* One PHY during one operation. After a failure nothing more is read or written. */
struct Phy {
    SW_Device *device;
    uint8_t address;
    int status;
};

uint16_t read_phy(Phy *phy, uint8_t number)
{
    uint16_t value = 0;
    if (phy->status == SW_STATUS_OK) {
        phy->status = Register_Read(phy->device, phy->address, number, &value);
    }
    return value;
}

void write_phy(Phy *phy, uint8_t number, uint16_t value)
{
    if (phy->status == SW_STATUS_OK) {
        phy->status = Register_Write(phy->device, phy->address, number, value);
    }
}

void change_phy(Phy *phy, uint8_t number, uint16_t clear, uint16_t set)
{
    const uint16_t old = read_phy(phy, number);
    write_phy(phy, number, static_cast<uint16_t>((old & ~clear) | set));
}

/* The PHY of a driver port, its status the checks' outcome. */
Phy find_phy(SW_Device *device, uint32_t port, const void *argument)
{
    Phy phy = {device, SMI_NONE, SW_STATUS_OK};
    uint8_t hardware_port = 0;
    phy.status = Check_Port(device, port, argument, FAMILY_ALWAYS, &hardware_port);
    if (phy.status == SW_STATUS_OK) {
        phy.address = SMI_Address(*device, hardware_port, SMI_PHY);
        phy.status = phy.address == SMI_NONE ? SW_STATUS_NOT_SUPPORTED : SW_STATUS_OK;
    }
    return phy;
}

/* An idle bus reads as all ones, a missing device as all zeros. */
void check_presence(Phy *phy)
{
    const uint16_t first = read_phy(phy, IDENTIFIER_1);
    const uint16_t second = read_phy(phy, IDENTIFIER_2);
    if (phy->status == SW_STATUS_OK &&
        ((first == 0xFFFF && second == 0xFFFF) || (first == 0 && second == 0))) {
        phy->status = SW_STATUS_FAIL;
    }
}

bool is_gigabit(Phy *phy)
{
    return (read_phy(phy, STATUS) & STATUS_EXTENDED) != 0 &&
           (read_phy(phy, EXTENDED_STATUS) & EXTENDED_GIGABIT) != 0;
}

void program_abilities(Phy *phy, const Abilities &abilities)
{
    check_presence(phy);
    const bool gigabit = is_gigabit(phy);
    if (phy->status == SW_STATUS_OK && !gigabit && abilities.base == 0) {
        phy->status = SW_STATUS_NOT_SUPPORTED;
    }
    change_phy(phy, ADVERTISEMENT, BASE_ABILITIES, abilities.base);
    if (gigabit) {
        change_phy(phy, GIGABIT_CONTROL, GIGABIT_ABILITIES, abilities.gigabit);
    }
    change_phy(phy, CONTROL, 0, CONTROL_AUTO | CONTROL_RESTART);
}

/* Common abilities, the best first. */
struct Common_Ability {
    uint16_t base;
    uint16_t gigabit;
    PHY_Link link;
};
constexpr Common_Ability BEST_FIRST[] = {
    {0, FULL_1000, {1, SW_SPEED_1000}}, {0, HALF_1000, {0, SW_SPEED_1000}},
    {FULL_100, 0, {1, SW_SPEED_100}},   {HALF_100, 0, {0, SW_SPEED_100}},
    {FULL_10, 0, {1, SW_SPEED_10}},     {HALF_10, 0, {0, SW_SPEED_10}},
};

PHY_Link negotiated_link(Phy *phy)
{
    unsigned base = read_phy(phy, ADVERTISEMENT);
    base &= read_phy(phy, PARTNER_ABILITY);
    unsigned gigabit = 0;
    if (is_gigabit(phy)) {
        gigabit = read_phy(phy, GIGABIT_CONTROL);
        gigabit &= unsigned{read_phy(phy, GIGABIT_STATUS)} >> GIGABIT_STATUS_SHIFT;
    }
    for (const Common_Ability &row : BEST_FIRST) {
        if ((base & row.base) != 0 || (gigabit & row.gigabit) != 0) {
            return row.link;
        }
    }
    return {0, SW_SPEED_UNKNOWN};
}

/* Both speed bits together are reserved: unknown. */
PHY_Link forced_link(uint16_t control)
{
    const uint32_t high = (control & CONTROL_SPEED_HIGH) != 0 ? SW_SPEED_1000 : 0;
    const uint32_t low = (control & CONTROL_SPEED_LOW) != 0 ? SW_SPEED_100 : 0;
    return {(control & CONTROL_FULL) != 0 ? 1U : 0, high | low};
}

/* Runs `work` on the PHY under the PHY lock; returns its outcome. */
template <typename Work>
int run_locked(Phy *phy, Work work)
{
    const Held_Lock lock(phy->device, SW_LOCK_PHY);
    if (!lock.taken()) {
        return SW_STATUS_FAIL;
    }
    work(phy);
    return phy->status;
}

/* Runs `access` with the page selected; the page of before is restored on every path. */
template <typename Access>
void access_page(Phy *phy, uint32_t page, Access access)
{
    const uint16_t previous = read_phy(phy, PAGE);
    if (phy->status != SW_STATUS_OK) {
        return;
    }
    write_phy(phy, PAGE, static_cast<uint16_t>(page));
    access(phy);
    Phy restoring = {phy->device, phy->address, SW_STATUS_OK};
    write_phy(&restoring, PAGE, previous);
    phy->status = phy->status == SW_STATUS_OK ? restoring.status : phy->status;
}

template <typename Access>
int access_register(Phy phy, uint32_t number, uint32_t page, Access access)
{
    if (phy.status != SW_STATUS_OK) {
        return phy.status;
    }
    if (number > LAST_REGISTER) {
        return SW_STATUS_FAIL;
    }
    return run_locked(&phy, [page, access](Phy *held) { access_page(held, page, access); });
}

} // namespace

int swSetPortAutoMode(SW_Device *device, uint32_t port, uint32_t mode)
{
    Phy phy = find_phy(device, port, device);
    if (phy.status != SW_STATUS_OK) {
        return phy.status;
    }
    if (mode >= std::size(AUTO_MODES)) {
        return SW_STATUS_FAIL;
    }
    return run_locked(&phy, [mode](Phy *held) { program_abilities(held, AUTO_MODES[mode]); });
}

int swReadPagedPhyReg(SW_Device *device, uint32_t port, uint32_t number, uint32_t page,
                      uint16_t *value)
{
    uint16_t content = 0;
    const int status =
        access_register(find_phy(device, port, value), number, page, [number, &content](Phy *phy) {
            content = read_phy(phy, static_cast<uint8_t>(number));
        });
    if (status == SW_STATUS_OK) {
        *value = content;
    }
    return status;
}

int swWritePagedPhyReg(SW_Device *device, uint32_t port, uint32_t number, uint32_t page,
                       uint16_t value)
{
    return access_register(find_phy(device, port, device), number, page, [number, value](Phy *phy) {
        write_phy(phy, static_cast<uint8_t>(number), value);
    });
}

int PHY_Read_Link(SW_Device *device, uint32_t hardwarePort, PHY_Link *link)
{
    Phy phy = {device, SMI_Address(*device, hardwarePort, SMI_PHY), SW_STATUS_OK};
    if (phy.address == SMI_NONE) {
        return SW_STATUS_NOT_SUPPORTED;
    }
    PHY_Link answer = {};
    const int status = run_locked(&phy, [&answer](Phy *held) {
        const uint16_t control = read_phy(held, CONTROL);
        answer = (control & CONTROL_AUTO) != 0 ? negotiated_link(held) : forced_link(control);
    });
    if (status == SW_STATUS_OK) {
        *link = answer;
    }
    return status;
}
