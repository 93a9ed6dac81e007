enum id_number = 1002
