/* Prints a startup file with all 4,095 VLANs, for where no test program makes one. */

#include "tests/support/startup_file.h"

#include <cstdio>
#include <string>

int main()
{
    static SW_Config config;
    SetAllVlans(&config);
    const std::string text = StartupFileText(config);
    return fwrite(text.data(), 1, text.size(), stdout) == text.size() ? 0 : 1;
}
