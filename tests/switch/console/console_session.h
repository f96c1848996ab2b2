#pragma once

#include "switch/console/main_menu.h"
#include "switch/console/ranges.h"
#include "switch/console/setting_menus.h"
#include "tests/support/input_feed.h"
#include "tests/switch/console/device_board.h"
#include "tests/switch/console/menu_texts.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

/* Lines typed into a menu and what shows. */
struct Typed_Row {
    const char *name;
    const char *typed;
    std::string shown;
};

inline void PrintTo(const Typed_Row &row, std::ostream *out)
{
    *out << row.name;
}

/* How often part stands in text. */
inline size_t count_of(const std::string &text, const std::string &part)
{
    size_t found = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        found++;
    }
    return found;
}

/*
 * The console on the simulated board of DeviceViews: running and applied hold the factory defaults,
 * the ranges are those of the start, and there is no startup file unless a test gives one.
 */
class ConsoleSession : public DeviceViews
{
protected:
    using Setting_Menu = void (*)(SW_Control *control, uint32_t *forceExit);
    using Main_Variant = void (*)(SW_Control *context, const char *startup_path,
                                  uint32_t *force_exit, bool load_startup);

    ConsoleSession()
    {
        SetSwitchConfigDefaults(&running_);
        applied_ = running_;
        SW_Ranges = SW_INITIAL_RANGES;
    }

    /* What a menu prints for the typed lines. All of them must be read. */
    std::string visit(Setting_Menu menu, std::string_view typed)
    {
        return console([&] { menu(&control_, &force_exit_); }, typed);
    }

    std::string enter(Main_Variant menu, std::string_view typed, bool load = false)
    {
        return console([&] { menu(&control_, path_.c_str(), &force_exit_, load); }, typed);
    }

    void use_startup_file(const std::string &path)
    {
        path_ = startup_file_ = path;
        control_.startupPath = startup_file_.c_str();
    }

    /* The given fields of the running configuration's LAN and WAN. */
    SW_Port_Config &lan() { return running_.ports[1]; }
    SW_Port_Config &wan() { return running_.ports[2]; }

    uint32_t force_exit_ = 0;
    std::string path_; /* what the menu is told */

private:
    std::string startup_file_; /* what the context says */

    template <class Action>
    static std::string console(const Action &action, std::string_view typed)
    {
        const Console_Run run = run_console(typed, action);
        EXPECT_EQ(run.rest, "");
        return run.output;
    }
};
