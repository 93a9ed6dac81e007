import "ids.tlv"
struct session = 1001 { id_number number }
