import "slots.tlv"
struct port_id = 1358 { slot_id slot }
