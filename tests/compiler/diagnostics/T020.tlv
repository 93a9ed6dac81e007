enum led_kind = 1362
message led_request { led_kind kind }
struct led_control = 1357 { led_request request }
array led_requests of led_request[4]
union led_value by led_kind kind { 1: led_request request }
message led_requests_message { led_request request }
