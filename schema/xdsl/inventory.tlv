//! Inventory of a line after ITU-T G.997.1. Vendor identifiers have the form of G.994.1.

import "../common/session.tlv"
import "headers.tlv"

bytes zel_xdsl_g997_inventory_ne_g994_sys_vendor_id_array[8]
bytes zel_xdsl_g997_inventory_ne_version_number_array[32]
bytes zel_xdsl_g997_inventory_ne_serial_number_array[32]
bytes zel_xdsl_g997_inventory_ne_aux_inventory_array[64]

/// Inventory to configure: vendor, version, serial number and auxiliary inventory.
struct zel_xdsl_g997_inventory_ne = 1402 {
    zel_xdsl_g997_inventory_ne_g994_sys_vendor_id_array  g994_sys_vendor_id
    zel_xdsl_g997_inventory_ne_version_number_array      version_number
    zel_xdsl_g997_inventory_ne_serial_number_array       serial_number
    uint32                                               value
    zel_xdsl_g997_inventory_ne_aux_inventory_array       aux_inventory
}

bytes zel_xdsl_g997_inventory_g994_vendor_id_array[8]
bytes zel_xdsl_g997_inventory_g994_sys_vendor_id_array[8]
bytes zel_xdsl_g997_inventory_version_number_array[32]
bytes zel_xdsl_g997_inventory_serial_number_array[32]
bytes zel_xdsl_g997_inventory_drvVerStr_array[64]
bytes zel_xdsl_g997_inventory_phyVerStr_array[32]
bytes zel_xdsl_g997_inventory_venVerStr_array[32]

/// Inventory: vendor identifiers, serial number, and the versions of driver, PHY and vendor.
struct zel_xdsl_g997_inventory = 1403 {
    zel_xdsl_g997_inventory_g994_vendor_id_array      g994_vendor_id
    zel_xdsl_g997_inventory_g994_sys_vendor_id_array  g994_sys_vendor_id
    zel_xdsl_g997_inventory_version_number_array      version_number
    uint32                                            value_1
    int32                                             value_2
    zel_xdsl_g997_inventory_serial_number_array       serial_number
    zel_xdsl_g997_inventory_drvVerStr_array           driver_version
    zel_xdsl_g997_inventory_phyVerStr_array           phy_version
    zel_xdsl_g997_inventory_venVerStr_array           vendor_version
}

/// Two inventories; only their order tells them apart.
struct zel_xdsl_inventory_info = 1464 {
    zel_xdsl_g997_inventory  inventory_1
    zel_xdsl_g997_inventory  inventory_2
}

/// Command to configure the inventory.
message zel_xdsl_cfg_inventory_message {
    app_sess_hdr                session
    ifid                        interface
    zel_xdsl_cmd_hdr            cmd_hdr
    zel_xdsl_g997_inventory_ne  inventory
}
