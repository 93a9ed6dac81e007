prefix acme
