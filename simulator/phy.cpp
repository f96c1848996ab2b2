#include "simulator/phy.h"

#include <cstring>

namespace
{

/* Management registers, IEEE 802.3, table 22-6. */
enum Register : uint8_t {
    CONTROL = 0,
    STATUS = 1,
    IDENTIFIER_1 = 2,
    IDENTIFIER_2 = 3,
    ADVERTISEMENT = 4,
    PARTNER_ABILITY = 5,
    EXPANSION = 6,
    GIGABIT_CONTROL = 9,
    GIGABIT_STATUS = 10,
    EXTENDED_STATUS = 15
};

/* Control register, 22.2.4.1. */
constexpr uint16_t CONTROL_RESET = 0x8000;
constexpr uint16_t CONTROL_SPEED_LOW = 0x2000;
constexpr uint16_t CONTROL_NEGOTIATE = 0x1000;
constexpr uint16_t CONTROL_POWER_DOWN = 0x0800;
constexpr uint16_t CONTROL_RESTART = 0x0200;
constexpr uint16_t CONTROL_FULL_DUPLEX = 0x0100;
constexpr uint16_t CONTROL_SPEED_HIGH = 0x0040;
constexpr uint16_t CONTROL_KEPT = 0x7DC0; /* no reserved and no self-clearing bits */

/* Status register, 22.2.4.2. */
constexpr uint16_t STATUS_ABILITIES = 0x7849; /* 10, 100 Mbit/s, negotiation, extended registers */
constexpr uint16_t STATUS_EXTENDED = 0x0100;
constexpr uint16_t STATUS_NEGOTIATED = 0x0020;
constexpr uint16_t STATUS_LINK = 0x0004;

constexpr uint16_t ADVERTISEMENT_AT_RESET = 0x01E1; /* 802.3 selector, 10 and 100 Mbit/s */
constexpr uint16_t ADVERTISEMENT_KEPT = 0xBFFF;
constexpr int ADVERTISEMENT_SHIFT = 5; /* of the ability bits */

constexpr uint16_t PARTNER_ACKNOWLEDGE = 0x4001; /* with the 802.3 selector */
constexpr uint16_t PARTNER_NEGOTIATES = 0x0001;  /* expansion register */

constexpr uint16_t GIGABIT_CONTROL_AT_RESET = 0x0300;
constexpr uint16_t GIGABIT_CONTROL_KEPT = 0xFF00;
constexpr int GIGABIT_CONTROL_SHIFT = 8;
constexpr int GIGABIT_STATUS_SHIFT = 10;
constexpr uint16_t GIGABIT_RECEIVERS_OK = 0x3000;
constexpr uint16_t EXTENDED_GIGABIT = 0x3000;
constexpr int GIGABIT_ABILITIES_SHIFT = 4; /* of SIM_1000_HALF */

constexpr uint16_t PAGE_KEPT = 0x00FF;

/* Page 3 holds the functions of the LEDs; what they do is not simulated. */
constexpr uint8_t LED_PAGE = 3;
constexpr uint8_t LED_REGISTER = 16;
constexpr uint16_t LED_AT_RESET = 0x1021;

bool negotiates(const Sim_Phy &phy)
{
    return (phy.control & CONTROL_NEGOTIATE) != 0;
}

unsigned advertised(const Sim_Phy &phy)
{
    const unsigned fast = (phy.advertisement >> ADVERTISEMENT_SHIFT) & SIM_UP_TO_100;
    const unsigned gigabit = (phy.gigabitControl >> GIGABIT_CONTROL_SHIFT) & 3U;
    return fast | (gigabit << GIGABIT_ABILITIES_SHIFT);
}

/* What a PHY does that is told its speed: no link unless the far end knows the speed; the duplex
 * is its own affair. */
Sim_Link forced_link(const Sim_Phy &phy)
{
    const unsigned low = (phy.control & CONTROL_SPEED_LOW) != 0 ? 1 : 0;
    const unsigned high = (phy.control & CONTROL_SPEED_HIGH) != 0 ? 2 : 0;
    const unsigned speed = low | high;
    if (((phy.partner >> (2 * speed)) & 3U) == 0) {
        return SIM_LINK_DOWN;
    }
    return {true, (phy.control & CONTROL_FULL_DUPLEX) != 0, static_cast<uint8_t>(speed)};
}

void settle(Sim_Phy *phy)
{
    phy->linkWasLost = phy->linkWasLost || phy->link.up;
    if ((phy->control & CONTROL_POWER_DOWN) != 0) {
        phy->link = SIM_LINK_DOWN;
    } else if (negotiates(*phy)) {
        phy->link = Sim_Link_Of(advertised(*phy), phy->partner);
    } else {
        phy->link = forced_link(*phy);
    }
}

void reset(Sim_Phy *phy)
{
    phy->control = CONTROL_NEGOTIATE | CONTROL_FULL_DUPLEX |
                   (phy->gigabit ? CONTROL_SPEED_HIGH : CONTROL_SPEED_LOW);
    phy->advertisement = ADVERTISEMENT_AT_RESET;
    phy->gigabitControl = phy->gigabit ? GIGABIT_CONTROL_AT_RESET : 0;
    phy->page = 0;
    std::memset(phy->pages, 0, sizeof phy->pages);
    phy->pages[LED_PAGE][LED_REGISTER] = LED_AT_RESET;
    settle(phy);
}

void write_control(Sim_Phy *phy, uint16_t value)
{
    if ((value & CONTROL_RESET) != 0) {
        reset(phy);
        return;
    }
    const unsigned before = phy->control;
    const unsigned kept = phy->gigabit ? CONTROL_KEPT : CONTROL_KEPT & ~CONTROL_SPEED_HIGH;
    phy->control = static_cast<uint16_t>(value & kept);
    /* Speed and duplex bits mean nothing while negotiating: a change of theirs keeps the link. */
    const unsigned telling = negotiates(*phy)
                                 ? CONTROL_NEGOTIATE | CONTROL_POWER_DOWN
                                 : CONTROL_NEGOTIATE | CONTROL_POWER_DOWN | CONTROL_SPEED_LOW |
                                       CONTROL_SPEED_HIGH | CONTROL_FULL_DUPLEX;
    const bool restarted = negotiates(*phy) && (value & CONTROL_RESTART) != 0;
    if (restarted || ((before ^ phy->control) & telling) != 0) {
        settle(phy);
    }
}

/* The link bit reads as down once after a loss, also when the link is back (22.2.4.2.13). */
uint16_t read_status(Sim_Phy *phy)
{
    unsigned status = STATUS_ABILITIES;
    status |= phy->gigabit ? STATUS_EXTENDED : 0;
    status |= negotiates(*phy) && phy->link.up ? STATUS_NEGOTIATED : 0;
    status |= phy->link.up && !phy->linkWasLost ? STATUS_LINK : 0;
    phy->linkWasLost = false;
    return static_cast<uint16_t>(status);
}

/* What the far end has sent, 0 while nothing is negotiated. */
unsigned received(const Sim_Phy &phy)
{
    const bool listens = negotiates(phy) && (phy.control & CONTROL_POWER_DOWN) == 0;
    return listens ? phy.partner : 0;
}

uint16_t partner_ability(const Sim_Phy &phy)
{
    const unsigned abilities = received(phy);
    if (abilities == 0) {
        return 0;
    }
    return static_cast<uint16_t>(PARTNER_ACKNOWLEDGE |
                                 ((abilities & SIM_UP_TO_100) << ADVERTISEMENT_SHIFT));
}

uint16_t gigabit_status(const Sim_Phy &phy)
{
    if (!phy.gigabit) {
        return 0;
    }
    const unsigned abilities = received(phy) >> GIGABIT_ABILITIES_SHIFT;
    const unsigned receivers = phy.link.up && phy.link.speed == 2 ? GIGABIT_RECEIVERS_OK : 0;
    return static_cast<uint16_t>((abilities << GIGABIT_STATUS_SHIFT) | receivers);
}

uint16_t read_first_page(Sim_Phy *phy, uint8_t number)
{
    switch (number) {
    case CONTROL:
        return phy->control;
    case STATUS:
        return read_status(phy);
    case IDENTIFIER_1:
        return SIM_PHY_IDENTIFIER_1;
    case IDENTIFIER_2:
        return SIM_PHY_IDENTIFIER_2;
    case ADVERTISEMENT:
        return phy->advertisement;
    case PARTNER_ABILITY:
        return partner_ability(*phy);
    case EXPANSION:
        return received(*phy) != 0 ? PARTNER_NEGOTIATES : 0;
    case GIGABIT_CONTROL:
        return phy->gigabitControl;
    case GIGABIT_STATUS:
        return gigabit_status(*phy);
    case EXTENDED_STATUS:
        return phy->gigabit ? EXTENDED_GIGABIT : 0;
    default:
        return phy->pages[0][number];
    }
}

void write_first_page(Sim_Phy *phy, uint8_t number, uint16_t value)
{
    switch (number) {
    case CONTROL:
        write_control(phy, value);
        break;
    case ADVERTISEMENT:
        phy->advertisement = value & ADVERTISEMENT_KEPT;
        break;
    case GIGABIT_CONTROL:
        phy->gigabitControl = phy->gigabit ? value & GIGABIT_CONTROL_KEPT : 0;
        break;
    case STATUS:
    case IDENTIFIER_1:
    case IDENTIFIER_2:
    case PARTNER_ABILITY:
    case EXPANSION:
    case GIGABIT_STATUS:
    case EXTENDED_STATUS:
        break;
    default:
        phy->pages[0][number] = value;
    }
}

} // namespace

void Sim_Phy_Init(Sim_Phy *phy, bool gigabit, uint8_t partner)
{
    *phy = {};
    phy->gigabit = gigabit;
    phy->partner = partner;
    reset(phy);
}

uint16_t Sim_Phy_Read(Sim_Phy *phy, uint8_t number)
{
    if (number == SIM_PHY_PAGE_REGISTER) {
        return phy->page;
    }
    if (phy->page == 0) {
        return read_first_page(phy, number);
    }
    return phy->page < SIM_PHY_PAGES ? phy->pages[phy->page][number] : 0xFFFF;
}

void Sim_Phy_Write(Sim_Phy *phy, uint8_t number, uint16_t value)
{
    if (number == SIM_PHY_PAGE_REGISTER) {
        phy->page = value & PAGE_KEPT;
    } else if (phy->page == 0) {
        write_first_page(phy, number, value);
    } else if (phy->page < SIM_PHY_PAGES) {
        phy->pages[phy->page][number] = value;
    }
}

void Sim_Phy_Plug(Sim_Phy *phy, uint8_t partner)
{
    phy->partner = partner;
    settle(phy);
}
