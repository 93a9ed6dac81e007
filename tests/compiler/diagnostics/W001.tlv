//! Arrays that fit, and arrays that do not.

/// 65529 bytes and no more.
bytes fitting[65529]

/// One more.
bytes too_long[65530]

/// 8 bytes each, without headers.
array numbers of uint64[8192]

/// A port.
struct port = 33001 { uint16 slot  uint16 port }

/// 16 bytes each.
array ports of port[4096]
