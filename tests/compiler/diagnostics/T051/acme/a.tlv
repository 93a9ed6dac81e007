prefix acme_
enum acme_state = 40001
struct acme_port = 40002 { bytes[4] name  bytes[4] label as port_label }
enum state = 40003
