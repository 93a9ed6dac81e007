// The fields of the measured records, for code that must name each of them: stores one by one, and the accessors of
// peers, some of which spell names in another way.
#pragma once

#define SESSION_FIELDS(X)                                                                                    \
    X(value_1, Value1)                                                                                       \
    X(value_2, Value2)                                                                                       \
    X(value_3, Value3)                                                                                       \
    X(value_4, Value4)                                                                                       \
    X(msg_type, MsgType)

#define INTERFACE_FIELDS(X)                                                                                  \
    X(value_1, Value1)                                                                                       \
    X(value_2, Value2)                                                                                       \
    X(value_3, Value3)                                                                                       \
    X(value_4, Value4)                                                                                       \
    X(value_5, Value5)

#define LED_CONTROL_FIELDS(X)                                                                                \
    X(slot, Slot)                                                                                            \
    X(port, Port)                                                                                            \
    X(color, Color)

#define DOT3_FIELDS(X)                                                                                       \
    X(counter_1, Counter1)                                                                                   \
    X(counter_2, Counter2)                                                                                   \
    X(counter_3, Counter3)                                                                                   \
    X(counter_4, Counter4)                                                                                   \
    X(counter_5, Counter5)                                                                                   \
    X(counter_6, Counter6)                                                                                   \
    X(counter_7, Counter7)                                                                                   \
    X(counter_8, Counter8)                                                                                   \
    X(counter_9, Counter9)                                                                                   \
    X(counter_10, Counter10)                                                                                 \
    X(counter_11, Counter11)                                                                                 \
    X(counter_12, Counter12)                                                                                 \
    X(counter_13, Counter13)                                                                                 \
    X(counter_14, Counter14)                                                                                 \
    X(counter_15, Counter15)                                                                                 \
    X(counter_16, Counter16)                                                                                 \
    X(counter_17, Counter17)                                                                                 \
    X(counter_18, Counter18)                                                                                 \
    X(counter_19, Counter19)                                                                                 \
    X(counter_20, Counter20)                                                                                 \
    X(counter_21, Counter21)

#define VLAN_ID_FIELDS(X)                                                                                    \
    X(id, Id)                                                                                                \
    X(flag, Flag)

// The fields beside the VLAN's id.
#define VLAN_COUNTERS_FIELDS(X)                                                                              \
    X(counter_1, Counter1)                                                                                   \
    X(counter_2, Counter2)                                                                                   \
    X(counter_3, Counter3)                                                                                   \
    X(counter_4, Counter4)                                                                                   \
    X(counter_5, Counter5)                                                                                   \
    X(counter_6, Counter6)                                                                                   \
    X(counter_7, Counter7)                                                                                   \
    X(counter_8, Counter8)                                                                                   \
    X(counter_9, Counter9)                                                                                   \
    X(counter_10, Counter10)
