#pragma once

#include "switch/chip/device.h"
#include "switch/config/model.h"
#include "switch/engine/control.h"

#include <cstdint>
#include <cstdio>
#include <span>

/*
 * The layouts of the tables, from which tables.h prints a configuration and device_views.h what the
 * chip reports. Internal to this folder.
 */

inline constexpr const char *SW_VTU_TITLE = "===== VTU Tab =====\n";
inline constexpr const char *SW_COS_TITLE = "===== COS Tab =====\n";
inline constexpr const char *SW_USER_PRIO_HEADER = "User_priority Traff_class:\n";
inline constexpr const char *SW_DSCP_HEADER = "DSCP Traff_class:\n";

/* One pair of a COS table with the separator or the line end before it; eight stand in a line. The
 * last line is ended by the caller. */
void Print_Cos_Pair(int index, int trafficClass);

/* A table with a row for each port. Record is what a row shows: SW_Port_Config, SW_Port_Status. */
template <class Record>
struct SW_Column {
    const char *format;            /* with one %s, or with one %d where text is null */
    const char *(*text)(uint32_t); /* of the value; null: the number itself is shown */
    uint32_t (*value)(const Record *record);
    /* Reads the value from the chip; a failure leaves the record as it was. Null: not read, or read
     * together with an earlier column. */
    void (*read)(SW_Device *device, uint32_t chipPort, Record *record);
};

template <class Record>
struct SW_Port_Table {
    const char *title;
    const char *header; /* one line or two */
    const char *nameFormat;
    std::span<const SW_Column<Record>> columns;
};

extern const SW_Port_Table<SW_Port_Config> SW_PORTS_CONFIG_TABLE; /* not read from the chip */
extern const SW_Port_Table<SW_Port_Config> SW_VLAN_TABLE;
extern const SW_Port_Table<SW_Port_Config> SW_QOS_TABLE;
extern const SW_Port_Table<SW_Port_Status> SW_PORTS_STATUS_TABLE;

/* What becomes of each cell of a device row. */
struct SW_Row_Steps {
    bool read;  /* it is read from the chip into the record, */
    bool print; /* then it is printed from the record */
};

template <class Record>
void Print_Cell(const SW_Column<Record> &column, const Record *record)
{
    const uint32_t value = column.value(record);
    if (column.text != nullptr) {
        std::printf(column.format, column.text(value));
    } else {
        std::printf(column.format, static_cast<int>(value));
    }
}

template <class Record>
void Print_Row(const SW_Port_Table<Record> &table, int port, const Record *record)
{
    std::printf(table.nameFormat, SW_Port_Names[port]);
    for (const SW_Column<Record> &column : table.columns) {
        Print_Cell(column, record);
    }
}

/* A row of the device form, cell by cell. */
template <class Record>
void Device_Row(const SW_Port_Table<Record> &table, SW_Row_Steps steps, SW_Device *device, int port,
                Record *record)
{
    if (steps.print) {
        std::printf(table.nameFormat, SW_Port_Names[port]);
    }
    for (const SW_Column<Record> &column : table.columns) {
        if (steps.read && column.read != nullptr) {
            column.read(device, static_cast<uint32_t>(SW_Chip_Ports[port]), record);
        }
        if (steps.print) {
            Print_Cell(column, record);
        }
    }
}

/* Header and the rows of all ports, whose records are given by port index. */
template <class Record>
void Device_Rows(const SW_Port_Table<Record> &table, SW_Row_Steps steps, SW_Device *device,
                 Record (&records)[SW_PORTS])
{
    if (steps.print) {
        std::fputs(table.header, stdout);
    }
    for (int port = 0; port < SW_PORTS; port++) {
        Device_Row(table, steps, device, port, &records[port]);
    }
}
