#include "simulator/faults.h"

namespace
{

constexpr uint8_t COMMAND_REGISTER = 0;
constexpr uint32_t ALL_ONES = 0xFFFF;
constexpr uint32_t BUSY = 0x8000;

bool matches(uint8_t wanted, uint8_t number)
{
    return wanted == SIM_ANY || wanted == number;
}

bool fits(const Sim_Fault &fault, const MDIO_Record &record)
{
    return matches(fault.address, record.phyAddress) &&
           matches(fault.registerNumber, record.registerNumber) &&
           (fault.kind == SIM_FAULT_FAIL || record.operation == MDIO_READ);
}

/* The next number of the generator SplitMix64. */
uint64_t draw(uint64_t *state)
{
    *state += 0x9E3779B97F4A7C15;
    uint64_t mixed = *state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
}

/* Counts the request for every planned fault that it fits; null when none breaks it. */
const Sim_Fault *planned_fault(Sim_Faults *faults, const MDIO_Record &record)
{
    const Sim_Fault *found = nullptr;
    for (int place = 0; place < faults->plannedCount; ++place) {
        const Sim_Fault &fault = faults->planned[place];
        if (fits(fault, record)) {
            const uint32_t turn = ++faults->fitted[place];
            const bool hit = turn >= fault.first && turn - fault.first < fault.count;
            found = hit && found == nullptr ? &fault : found;
        }
    }
    return found;
}

constexpr Sim_Fault RANDOM_FAULTS[] = {{SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY},
                                       {SIM_FAULT_ALL_ONES, 1, 1, SIM_ANY, SIM_ANY}};

const Sim_Fault *random_fault(Sim_Faults *faults, const MDIO_Record &record)
{
    if (faults->oneIn == 0) {
        return nullptr;
    }
    const uint64_t number = draw(&faults->random);
    const Sim_Fault &fault = RANDOM_FAULTS[number >> 63];
    return number % faults->oneIn == 0 && fits(fault, record) ? &fault : nullptr;
}

int break_request(const Sim_Faults &faults, const Sim_Fault &fault, unsigned long number,
                  MDIO_Record *record)
{
    if (fault.kind == SIM_FAULT_FAIL) {
        errno = fault.error;
        return -1;
    }
    const int answer = Sim_Layer_Pass(faults.layer, number, record);
    record->value = fault.kind == SIM_FAULT_ALL_ONES ? ALL_ONES : record->value | BUSY;
    return answer;
}

int handle(void *context, unsigned long number, MDIO_Record *record)
{
    auto *faults = static_cast<Sim_Faults *>(context);
    const Sim_Fault *planned = planned_fault(faults, *record);
    const Sim_Fault *random = random_fault(faults, *record);
    const Sim_Fault *fault = planned != nullptr ? planned : random;
    ++faults->requests;
    if (fault == nullptr) {
        return Sim_Layer_Pass(faults->layer, number, record);
    }
    ++faults->broken;
    return break_request(*faults, *fault, number, record);
}

bool may_last_forever(const Sim_Fault &fault)
{
    return fault.kind == SIM_FAULT_FAIL ||
           (fault.kind == SIM_FAULT_BUSY && fault.address != SIM_ANY &&
            fault.registerNumber == COMMAND_REGISTER);
}

} // namespace

bool Sim_Faults_Install(Sim_Faults *faults)
{
    return Sim_Layer_Install(&faults->layer, {handle, faults});
}

bool Sim_Faults_Add(Sim_Faults *faults, const Sim_Fault &fault)
{
    if (faults->plannedCount == SIM_FAULTS || fault.first == 0 || fault.count == 0 ||
        fault.error < 1 || (fault.count == SIM_FOREVER && !may_last_forever(fault))) {
        return false;
    }
    faults->planned[faults->plannedCount] = fault;
    faults->fitted[faults->plannedCount] = 0;
    ++faults->plannedCount;
    return true;
}

bool Sim_Faults_At_Random(Sim_Faults *faults, uint64_t seed, uint32_t oneIn)
{
    if (oneIn == 1) {
        return false;
    }
    faults->random = seed;
    faults->oneIn = oneIn;
    return true;
}

void Sim_Faults_Clear(Sim_Faults *faults)
{
    const Sim_Layer layer = faults->layer;
    *faults = {};
    faults->layer = layer;
}
