# The measured records for Cap'n Proto.
@0xb7c5a8e1d2f34907;
using Cxx = import "/capnp/c++.capnp";
$Cxx.namespace("peer_capnp");

struct Session {
  value1 @0 :UInt32;
  value2 @1 :UInt32;
  value3 @2 :UInt32;
  value4 @3 :UInt32;
  msgType @4 :UInt32;
}

struct Interface {
  value1 @0 :UInt32;
  value2 @1 :UInt32;
  value3 @2 :UInt32;
  value4 @3 :UInt32;
  value5 @4 :UInt32;
}

struct LedControl {
  slot @0 :UInt16;
  port @1 :UInt16;
  color @2 :UInt32;
}

struct LedControlRequest {
  session @0 :Session;
  interfaceId @1 :Interface;
  ledControl @2 :LedControl;
}

struct Dot3Stats {
  counter1 @0 :UInt32;
  counter2 @1 :UInt32;
  counter3 @2 :UInt32;
  counter4 @3 :UInt32;
  counter5 @4 :UInt32;
  counter6 @5 :UInt32;
  counter7 @6 :UInt32;
  counter8 @7 :UInt32;
  counter9 @8 :UInt32;
  counter10 @9 :UInt32;
  counter11 @10 :UInt32;
  counter12 @11 :UInt32;
  counter13 @12 :UInt32;
  counter14 @13 :UInt32;
  counter15 @14 :UInt32;
  counter16 @15 :UInt64;
  counter17 @16 :UInt64;
  counter18 @17 :UInt64;
  counter19 @18 :UInt64;
  counter20 @19 :UInt64;
  counter21 @20 :UInt64;
}

struct Dot3StatsUpdate {
  session @0 :Session;
  interfaceId @1 :Interface;
  dot3Stats @2 :Dot3Stats;
}

struct VlanId {
  id @0 :UInt16;
  flag @1 :UInt32;
}

struct VlanCounters {
  vlanId @0 :VlanId;
  counter1 @1 :UInt64;
  counter2 @2 :UInt32;
  counter3 @3 :UInt32;
  counter4 @4 :UInt32;
  counter5 @5 :UInt32;
  counter6 @6 :UInt32;
  counter7 @7 :UInt64;
  counter8 @8 :UInt32;
  counter9 @9 :UInt32;
  counter10 @10 :UInt32;
}

struct VlanStats {
  session @0 :Session;
  interfaceId @1 :Interface;
  vlanCounters @2 :List(VlanCounters);
}

struct GenericReport {
  value @0 :UInt8;
  buffer @1 :Data;
}
