#pragma once

#include "switch/engine/apply.h"
#include "tests/switch/engine/board.h"

/* Indices of a copper port and of another one. */
inline constexpr int LAN = 1;
inline constexpr int SFP0 = 3;

/* A board with factory settings on ports of custom VLAN mode, its chip brought up. */
class Port_Board : public Board
{
protected:
    Port_Board()
    {
        set_custom_defaults();
        bring_up();
    }

    /* Writes a port of the running configuration, logging against the applied one. */
    std::string apply(int port, bool log)
    {
        return printed([&] {
            result_ =
                SW_Apply_Port(&control_, port, &running_.ports[port], &applied_.ports[port], log);
        });
    }

    bool result_ = false;
};
