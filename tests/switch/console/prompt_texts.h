#pragma once

/* What the prompts of one value say between their label and the current value. */

// clang-format off
#define RATE_CHOICES \
    "(0(Not limited)/1(128K)/2(256K)/3(512K)/4(1M)/5(2M)/6(4M)/7(8M)/8(16M)/9(32M)/10(64M)/11(128M)/12(256M))"
#define EGRESS_MODE_CHOICES "(0(Unmodify egress)/1(Untagged egress)/2(Tagged egress)/3(Add tag))"
#define DOT1Q_MODE_CHOICES "(0(Disable)/1(Fallback)/2(Check)/3(Secure))"
#define AUTO_MODE_LIST \
    "Autonegotiation mode:\n" \
    "0  - Auto for both speed and duplex\n" \
    "1  - Auto for duplex only and speed 1000Mbps\n" \
    "2  - Auto for duplex only and speed 100Mbps\n" \
    "3  - Auto for duplex only and speed 10Mbps\n" \
    "4  - Auto for speed only and Full duplex\n" \
    "5  - Auto for speed only and Half duplex\n" \
    "6  - Speed 1000Mbps and Full duplex\n" \
    "7  - Speed 1000Mbps and Half duplex\n" \
    "8  - Speed 100Mbps and Full duplex\n" \
    "9  - Speed 100Mbps and Half duplex\n" \
    "10 - Speed 10Mbps and Full duplex\n" \
    "11 - Speed 10Mbps and Half duplex\n"
#define SPEED_CHOICES "(0(10 Mbps)/1(100 Mbps)/2(1000 Mbps))"
#define FRAME_SIZE_CHOICES "(0(1522 Bytes)/1(1632 Bytes))"
#define TAG_CHOICES "(0(Unmodified)/1(None)/2(Untagged)/3(Tagged))"
// clang-format on
