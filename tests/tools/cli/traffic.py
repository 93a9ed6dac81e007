#!/usr/bin/env python3
"""traffic.py SMALL BIG >capture: frames of all that a network carries, with and without the messages in these files.

Standard error says what is in each frame: "7 small", or the code of what is missing.
"""
import random
import struct
import sys

SNAPPED = 90
SYN = 0x02
frames = []


def frame(what, data, length=None):
    frames.append((what, data, length or len(data)))


def ethernet(ethertype, data):
    return bytes.fromhex("0202020202020202020202") + b"\x01" + struct.pack(">H", ethertype) + data


def ip(protocol, data, ident=0, offset=0, more=False):
    flags = offset // 8 | (0x2000 if more else 0)
    return ethernet(0x0800, struct.pack(">BBHHHBBH4s4s", 0x45, 0, 20 + len(data), ident, flags, 64, protocol, 0,
                                        bytes([10, 0, 0, 1]), bytes([10, 0, 0, 2])) + data)


def udp(data, port=9000):
    return struct.pack(">HHHH", 4000, port, 8 + len(data), 0) + data


def tcp(data, sequence, flags=0x18, port=9000):
    return struct.pack(">HHIIBBHHH", 4001, port, sequence, 0, 0x50, flags, 1024, 0, 0) + data


small, big = (open(name, "rb").read() for name in sys.argv[1:])
rng = random.Random(7)

frame("small", ip(17, udp(small)))
dns = "1234010000010000000000000776657273696f6e0462696e640000100003"
frame("unknown-message", ip(17, udp(bytes.fromhex(dns), 53)))
frame("segment", ip(6, tcp(b"", 999, SYN)))
frame("segment", ip(6, tcp(bytes.fromhex("1603010200010001fc0303") + rng.randbytes(300), 1000, port=443)))
frame("segment", ip(6, tcp(b"GET / HTTP/1.1\r\nHost: example.net\r\n\r\n", 1000, port=80)))
arp = "0001080006040001020202020202"
frame("unknown-message", ethernet(0x0806, bytes.fromhex(arp) + bytes(14)))
frame("unknown-message", ip(1, bytes.fromhex("0800f7ff00000000") + bytes(48)))
frame("unknown-message", ip(17, udp(b"\x23" + bytes(47), 123)))  # time
frame("unknown-message", ip(17, udp(bytes(120))))
frame("unknown-message", ip(17, udp(rng.randbytes(200))))
frame("unknown-message", ip(17, udp(bytes.fromhex("00060004000000070006000400000008"))))  # bare elements
frame("unknown-message", ip(17, udp(b"")))
frame("unknown-message", ip(17, udp(bytes.fromhex("cafe0001") + small)))  # behind a header of somebody's
frame("unknown-message", ip(17, udp(small + b"\0")))
frame("unknown-message", ip(17, udp(small[:-5] + b"\1" + small[-4:])))  # a wrong length inside
whole = ip(17, udp(big))
frame("cut", whole[:SNAPPED], len(whole))
frame("fragment", ip(17, udp(big)[:48], 5, 0, True))
datagram = udp(big)
for offset in range(0, len(datagram), 64):
    last = offset + 64 >= len(datagram)
    frame("big" if last else "", ip(17, datagram[offset : offset + 64], 6, offset, not last))
half = len(big) // 2
frame("segment", ip(6, tcp(big[:half], 5000, port=9001)))
frame("segment", ip(6, tcp(big[half:], 5000 + half, port=9001)))
frame("small", ip(6, tcp(small, 7000, port=9002)))
frame("small big", ip(17, udp(small + big)))
frame("small", ip(17, udp(small)))

out = sys.stdout.buffer
out.write(struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 65535, 1))
for number, (what, data, length) in enumerate(frames, 1):
    out.write(struct.pack("<IIII", 1700000000 + number, 0, len(data), length) + data)
    for each in what.split():
        print(number, each, file=sys.stderr)
