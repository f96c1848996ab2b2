#include "simulator/seam.h"

#include <cerrno>

namespace
{

int refuse(int error)
{
    errno = error;
    return -1;
}

int request_from_chip(void *context, unsigned long number, MDIO_Record *record)
{
    auto *chip = static_cast<Sim_Chip *>(context);
    if (number != MDIO_REQUEST) {
        return refuse(ENOTTY);
    }
    if (record->operation == MDIO_READ) {
        record->value = Sim_Chip_Read(chip, record->phyAddress, record->registerNumber);
    } else if (record->operation == MDIO_WRITE) {
        Sim_Chip_Write(chip, record->phyAddress, record->registerNumber,
                       static_cast<uint16_t>(record->value));
    } else {
        return refuse(EINVAL);
    }
    return 0;
}

bool same(const MDIO_Handler &one, const MDIO_Handler &other)
{
    return one.request == other.request && one.context == other.context;
}

} // namespace

bool Sim_Layer_Install(Sim_Layer *layer, MDIO_Handler own)
{
    if (layer->own.request != nullptr) {
        return false;
    }
    layer->own = own;
    layer->below = MDIO_Install(own);
    return true;
}

bool Sim_Layer_Remove(Sim_Layer *layer)
{
    if (layer->own.request == nullptr) {
        return false;
    }
    const MDIO_Handler top = MDIO_Install(layer->below);
    if (!same(top, layer->own)) {
        MDIO_Install(top);
        return false;
    }
    *layer = {};
    return true;
}

int Sim_Layer_Pass(const Sim_Layer &layer, unsigned long number, MDIO_Record *record)
{
    return layer.below.request(layer.below.context, number, record);
}

bool Sim_Seam_Install(Sim_Layer *layer, Sim_Chip *chip)
{
    return Sim_Layer_Install(layer, {request_from_chip, chip});
}
