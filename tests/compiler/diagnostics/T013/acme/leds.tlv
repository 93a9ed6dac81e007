import "../base/session.tlv"
message led_request {
    session    session
    id_number  number
}
