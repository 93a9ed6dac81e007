//! Environment monitoring: readings of power, voltage and temperature sensors.

/// Reading of a power sensor.
struct zel_env_power_sensor_info = 1702 {
    int8    value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
}

/// Reading of a temperature sensor.
struct zel_env_temp_sensor_info = 1701 {
    int8  value_1
    int8  value_2
    int8  value_3
    int8  value_4
}

/// Reading of a voltage sensor; all of it is signed, unlike a power reading.
struct zel_env_volt_sensor_info = 1700 {
    int8   value_1
    int16  value_2
    int16  value_3
    int16  value_4
}

/// Kind of a sensor; selects the reading.
enum zel_envmon_type = 1704 { power = 0  voltage = 1  temperature = 2 }

/// Reading of the kind of sensor before it: power, voltage or temperature, or one byte for kind 3. Above 3
/// there is none, which is no fault.
union zel_env_monitoring_sensor_info_mon_type_union by zel_envmon_type mon_type {
          power: zel_env_power_sensor_info  power
        voltage: zel_env_volt_sensor_info   voltage
    temperature: zel_env_temp_sensor_info   temperature
              3: uint8                      value
}

/// Status of a sensor.
enum zel_envmon_status = 1703

/// Status and reading of one sensor.
struct zel_env_monitoring_sensor_info = 1699 {
    uint8                                          value
    zel_envmon_status                              status
    zel_envmon_type                                mon_type
    zel_env_monitoring_sensor_info_mon_type_union  reading
}

/// Environment monitoring data, without session header and interface identifier.
message env_monitoring_data_message { zel_env_monitoring_sensor_info sensor_info }
