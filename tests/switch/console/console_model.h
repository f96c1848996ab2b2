#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/*
 * A plain model of the console: what an operator has set, what was applied last, and what the
 * board's chip must hold after it. It knows nothing of the program's records, tables and registers.
 */

inline constexpr int MODEL_PORTS = 5;
inline constexpr int MODEL_VIDS = 4096;

enum Model_Setting : uint8_t {
    SETTING_AUTO_MODE,
    SETTING_VID,
    SETTING_FORCE_VID,
    SETTING_DOT1Q_MODE,
    SETTING_DISCARD_TAGGED,
    SETTING_DISCARD_UNTAGGED,
    SETTING_EGRESS_MODE,
    SETTING_CORE_TAG,
    SETTING_EGRESS_RATE,
    SETTING_LIMIT_MGMT,
    SETTING_COUNT_IFG,
    SETTING_COUNT_PRE,
    SETTING_PRI0_RATE,
    SETTING_PRI1_RATE,
    SETTING_PRI2_RATE,
    SETTING_PRI3_RATE,
    SETTING_MAP_RULE,
    SETTING_IP_PRIO,
    SETTING_USER_PRIO,
    SETTING_PORT_PRIO,
    MODEL_SETTINGS
};

enum class Setting_Kind : uint8_t { FLAG, NUMBER, RATE, DOT1Q_MODE, EGRESS_MODE, AUTO_MODE };
enum class Setting_View : uint8_t { PORTS_CONFIG, VLAN_TAB, QOS_TAB };

/* A setting of a port: where it is typed, what the log of an apply calls it, and its cell in the
 * view. The rows stand in the order in which an apply writes them and a view shows them. Neighbours
 * with the same menu and key are asked for one after the other. */
struct Setting_Row {
    Model_Setting setting;
    Setting_Kind kind;
    char menu; /* key of the full main menu */
    char key;  /* key of that menu */
    const char *name;
    Setting_View view;
    const char *cell; /* printf format of its text */
};

std::span<const Setting_Row> setting_rows();

/* The text of a value in views and logs; empty for a value outside the list. */
std::string setting_text(Setting_Kind kind, int32_t value);

/* An array that is indexed with any integer type, copied and compared whole. */
template <class Value, int Size>
struct Model_Array {
    Value values[Size]{};

    Value &operator[](int index) { return values[index]; }
    const Value &operator[](int index) const { return values[index]; }
    Value *begin() { return values; }
    Value *end() { return values + Size; }
    const Value *begin() const { return values; }
    const Value *end() const { return values + Size; }
    bool operator==(const Model_Array &) const = default;
};

/* A run of VLANs or ports as lists have it: "7" or "7-9". */
std::string run_text(int first, int last);

/* A range as it was typed, and the numbers that it names in the order written. */
struct Model_Range {
    std::string text;
    std::vector<int> values;
    bool operator==(const Model_Range &) const = default;
};

struct Model_Vlan {
    bool defined = false;
    int vid = 0;
    Model_Array<int, MODEL_PORTS> tags; /* by port index */
    bool operator==(const Model_Vlan &) const = default;
};

/* VLAN port modes. Two leave the port's settings alone, and no key gives them to a port. */
inline constexpr int MODE_NO = 0;
inline constexpr int MODE_DEFAULT = 1;
inline constexpr int MODE_ACCESS = 2;
inline constexpr int MODE_TRUNK = 3;
inline constexpr int MODE_CUSTOM = 4;

/* All settings of the switch: of the running configuration, the applied one, the chip. */
struct Model_State {
    int frame = 0; /* 1: 1632 bytes */
    Model_Array<Model_Array<int32_t, MODEL_SETTINGS>, MODEL_PORTS> ports;
    Model_Array<Model_Vlan, MODEL_VIDS> vlans;
    int count = 0; /* of VLANs, as the console counts them */
    Model_Array<int, 8> userClasses;
    Model_Array<int, 64> dscpClasses;
    Model_Array<int, MODEL_PORTS> modes;         /* not of the chip: 0 there */
    Model_Array<Model_Range, MODEL_PORTS> lists; /* not of the chip: empty there */
    bool operator==(const Model_State &) const = default;
};

struct Console_Model {
    Model_State running;
    Model_State applied;
    Model_State chip;
    /* What the range prompts offer. */
    Model_Range ports = {"0", {0}};
    Model_Range vlanIds = {"1", {1}};
    Model_Range userPrios = {"0", {0}};
    Model_Range dscps = {"0", {0}};
};

/* The console at its start: factory settings, none of them on the chip yet. */
Console_Model model_at_start();

/* "Reset Running Config To Factory Settings", "Apply Changes" with the lines that it prints, and
 * "ReInit". */
void model_factory(Model_State *state);
std::string model_apply(Console_Model *model);
void model_reinit(Model_State *chip);

/* The VLAN modes as the commands of the VLAN menu set them, and all of them once more. */
void model_default_mode(Model_State *state, int port);
void model_access_mode(Model_State *state, int port, int vid);
void model_trunk_mode(Model_State *state, int port, int vid, bool tagAll, const Model_Range &list);
void model_renew_modes(Model_State *state);
