enum acme_fan = 40001
prefix acme_fan
