//! Inventory of a line after ITU-T G.997.1. Vendor identifiers have the form of G.994.1.

import "../common/session.tlv"
import "headers.tlv"

/// Inventory to configure: vendor, version, serial number and auxiliary inventory.
struct zel_xdsl_g997_inventory_ne = 1402 {
    bytes[8]   g994_sys_vendor_id
    bytes[32]  version_number
    bytes[32]  serial_number
    uint32     value
    bytes[64]  aux_inventory
}

/// Inventory: vendor identifiers, serial number, and the versions of driver, PHY and vendor.
struct zel_xdsl_g997_inventory = 1403 {
    bytes[8]   g994_vendor_id
    bytes[8]   g994_sys_vendor_id
    bytes[32]  version_number
    uint32     value_1
    int32      value_2
    bytes[32]  serial_number
    bytes[64]  driver_version as zel_xdsl_g997_inventory_drvVerStr_array
    bytes[32]  phy_version as zel_xdsl_g997_inventory_phyVerStr_array
    bytes[32]  vendor_version as zel_xdsl_g997_inventory_venVerStr_array
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
