enum vlan_action = 1614
enum vlan_mode = 1615
struct vlan_change = 1616 {
    uint16       vlan
    vlan_action  vlan_action
}
union vlan_value by vlan_mode mode {
    1: uint16       vlan_mode
    2: vlan_action  action
}
struct vlan_detail = 1617 {
    vlan_change  vlan_change
}
