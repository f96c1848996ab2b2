#include "tests/switch/engine/vlan_host.h"

#include <cstring>
#include <numeric>

namespace
{

constexpr int ELSEWHERE = 0xA5;

template <class Record>
std::unique_ptr<Record> filled(int byte)
{
    auto record = std::make_unique<Record>();
    memset(static_cast<void *>(record.get()), byte, sizeof *record);
    return record;
}

/* Also of records with padding, whose bytes count too. */
template <class Record>
std::vector<uint8_t> bytes_of(const Record &record)
{
    std::vector<uint8_t> bytes(sizeof record);
    memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

template <class Record>
bool is_filled(const Record &record, int byte)
{
    return bytes_of(record) == std::vector<uint8_t>(sizeof record, static_cast<uint8_t>(byte));
}

} // namespace

Vlan_Host::Vlan_Host()
    : running_(filled<SW_Config>(UNTOUCHED)), others_{filled<SW_Config>(ELSEWHERE),
                                                      filled<SW_Config>(ELSEWHERE),
                                                      filled<SW_Config>(ELSEWHERE)},
      device_(filled<SW_Device>(ELSEWHERE)), sysConfig_(filled<SW_Sys_Config>(ELSEWHERE))
{
    memset(static_cast<void *>(&control_), 0, sizeof control_);
    control_.running = running_.get();
    control_.applied = others_[0].get();
    control_.startupImage = others_[1].get();
    control_.deviceImage = others_[2].get();
    control_.startupPath = "";
    control_.device = device_.get();
    control_.sysConfig = sysConfig_.get();
    memcpy(static_cast<void *>(&controlAtFirst_), &control_, sizeof control_);
}

std::unique_ptr<SW_Config> Vlan_Host::copy_of_running() const
{
    return std::make_unique<SW_Config>(*running_);
}

void Vlan_Host::set_untouched()
{
    memset(running_.get(), UNTOUCHED, sizeof *running_);
}

void Vlan_Host::set_factory()
{
    SetSwitchConfigDefaults(running_.get());
}

testing::AssertionResult Vlan_Host::only_running_was_edited() const
{
    for (const auto &other : others_) {
        if (!is_filled(*other, ELSEWHERE)) {
            return testing::AssertionFailure() << "another configuration was written";
        }
    }
    if (!is_filled(*device_, ELSEWHERE) || !is_filled(*sysConfig_, ELSEWHERE)) {
        return testing::AssertionFailure() << "a record of the driver was written";
    }
    if (bytes_of(control_) != bytes_of(controlAtFirst_)) {
        return testing::AssertionFailure() << "the context itself was written";
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult SameConfig(const SW_Config &actual, const SW_Config &expected)
{
    const std::vector<uint8_t> actualBytes = bytes_of(actual);
    const std::vector<uint8_t> expectedBytes = bytes_of(expected);
    for (size_t at = 0; at < sizeof actual; at++) {
        if (actualBytes[at] == expectedBytes[at]) {
            continue;
        }
        return testing::AssertionFailure() << "byte " << at << " is " << int{actualBytes[at]}
                                           << ", expected " << int{expectedBytes[at]};
    }
    return testing::AssertionSuccess();
}

void SetTags(SW_Config &config, int port, int first, int last, uint8_t tag)
{
    for (int vid = first; vid <= last; vid++) {
        config.vlans[vid].vtu.memberTagP[CHIP_PORTS[port]] = tag;
    }
}

void SetList(SW_Config &config, int port, const char *text)
{
    memset(config.vlanPortList[port], 0, sizeof config.vlanPortList[port]);
    memcpy(config.vlanPortList[port], text, strlen(text));
}

void SetDefaultPort(SW_Config &config, int port)
{
    SetTags(config, port, 0, 4095, 1);
    config.ports[port].vid = 1;
    config.ports[port].dot1qMode = 0;
    config.ports[port].discardTagged = 0;
    config.ports[port].egressMode = 0;
    SetList(config, port, "");
}

void SetAccessPort(SW_Config &config, int port, const char *list)
{
    const int vid = config.ports[port].vid;
    SetTags(config, port, 0, 4095, 1);
    if (vid <= 4095) {
        SetTags(config, port, vid, vid, 2);
    }
    config.ports[port].dot1qMode = 3;
    config.ports[port].discardTagged = 1;
    config.ports[port].egressMode = 0;
    SetList(config, port, list);
}

std::vector<int32_t> Numbers(int32_t first, int32_t last)
{
    std::vector<int32_t> numbers(static_cast<size_t>(last - first) + 1);
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}
