#include "simulator/mdio_device.h"

#include <algorithm>
#include <cerrno>
#include <cinttypes>

namespace
{

bool made_its_last_request(const Sim_Device &device)
{
    return device.lastRequest != 0 && device.counts.requests >= device.lastRequest;
}

int carry_out(const Sim_Device &device, unsigned long number, MDIO_Record *record)
{
    if (made_its_last_request(device)) {
        return ENODEV;
    }
    if (number != MDIO_REQUEST) {
        return ENOTTY;
    }
    if (record->operation != MDIO_READ && record->operation != MDIO_WRITE) {
        return EINVAL;
    }
    return MDIO_Request(number, record) < 0 ? errno : 0;
}

} // namespace

bool Sim_Device_Up(Sim_Device *device, const Sim_Chip_Row &row, Sim_Placement placement,
                   FILE *trace)
{
    if (!Sim_Seam_Install(&device->seam, &device->chip)) {
        return false;
    }
    Sim_Chip_Init(&device->chip, row, placement);
    Sim_Faults_Clear(&device->faults);
    Sim_Faults_Install(&device->faults);
    if (trace != nullptr) {
        Sim_Trace_Install(&device->trace, trace);
    }
    device->counts = {};
    device->lastRequest = 0;
    return true;
}

void Sim_Device_Down(Sim_Device *device)
{
    Sim_Layer_Remove(&device->trace.layer);
    Sim_Layer_Remove(&device->faults.layer);
    Sim_Layer_Remove(&device->seam);
}

int Sim_Device_Open(Sim_Device *device)
{
    if (made_its_last_request(*device)) {
        return ENODEV;
    }
    Sim_Device_Counts &counts = device->counts;
    ++counts.opens;
    counts.mostOpen = std::max(counts.mostOpen, counts.opens - counts.closes);
    return 0;
}

void Sim_Device_Close(Sim_Device *device)
{
    ++device->counts.closes;
}

int Sim_Device_Request(Sim_Device *device, unsigned long number, MDIO_Record *record)
{
    const int error = carry_out(*device, number, record);
    ++device->counts.requests;
    device->counts.failed += error != 0 ? 1 : 0;
    return error;
}

bool Sim_Device_Is_Gone(const Sim_Device &device)
{
    return made_its_last_request(device) && device.counts.closes == device.counts.opens;
}

void Sim_Device_Print_Counts(const Sim_Device_Counts &counts, FILE *file)
{
    fprintf(file,
            "opens %" PRIu64 "\nrequests %" PRIu64 "\nfailed %" PRIu64 "\ncloses %" PRIu64
            "\nmost open %" PRIu64 "\n",
            counts.opens, counts.requests, counts.failed, counts.closes, counts.mostOpen);
}
