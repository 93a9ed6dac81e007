// No import leads in a circle, but the families do.
import "../base/slots.tlv"
struct led = 1359 {
    slot first
    slot last
}
