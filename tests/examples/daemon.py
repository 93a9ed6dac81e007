#!/usr/bin/env python3
"""daemon.py TLV SCHEMA DAEMON..., or what runs the daemon: valgrind DAEMON

The daemon serves a peer that keeps to the rules beside a slow one that reads nothing, others that send rubbish, or messages
before their fingerprints, and one that leaves too much unread; and leaves nothing when nobody can connect any more."""
import contextlib
import random
import shutil
import socket
import subprocess
import sys
import tempfile

tlv, schema, *daemon = sys.argv[1:]
if not shutil.which(daemon[0]):
    print(f"skipped: there is no {daemon[0]}")
    sys.exit(77)


def sample(*words):
    body = subprocess.run([tlv, "sample", "--kind", "min", *words], check=True, capture_output=True).stdout
    return len(body).to_bytes(4, "big") + body


alarm = sample("--schema", schema, "watch_alarm_message", "--set", "alarm.text=help")
vlans = sample("zel_tib_vlan_stats_message", "--set", "session.msg_type=100", "--set",
               "vlan_stat_bundle.vlan_counters.count=3")
listener = socket.create_server(("127.0.0.1", 0), backlog=100)
listener.setsockopt(socket.SOL_SOCKET, socket.SO_SNDBUF, 4096)
printed = tempfile.TemporaryFile()
process = subprocess.Popen(daemon, stdin=listener, stdout=printed)


def connect():
    peer = socket.create_connection(listener.getsockname(), timeout=60)
    peer.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    return peer


def receive(peer):
    size = peer.recv(4, socket.MSG_WAITALL)
    return size + peer.recv(int.from_bytes(size, "big"), socket.MSG_WAITALL)


def see_off(peer, sent):
    """Sends, and reads until the daemon has closed the connection."""
    with peer, contextlib.suppress(ConnectionError):
        peer.sendall(sent)
        peer.shutdown(socket.SHUT_WR)
        while peer.recv(65536):
            pass


good = connect()
hello = receive(good)
good.sendall(hello)


def is_served():
    good.sendall(vlans + alarm)
    answer = receive(good)
    assert answer[-8:] == bytes([0, 6, 0, 4, 0, 0, 0, 1]), answer


slow = connect()
for index, byte in enumerate(hello + vlans + alarm):
    slow.sendall(bytes([byte]))
    if index % 50 == 0:
        is_served()

source = random.Random(1)
damaged = bytearray(hello + alarm)
damaged[len(hello) - 20] ^= 1
for rubbish in (alarm, hello + alarm[:-1], damaged, b"\xff" * 100, hello + b"\0\0\0\0", hello + b"\0\0\0\x05hello",
                hello + alarm[:4] + source.randbytes(len(alarm) - 4), hello + alarm[:60] + b"\xff" + alarm[61:],
                *(source.randbytes(source.randrange(300)) for _ in range(20))):
    see_off(connect(), rubbish)
    is_served()

unread = connect()
with contextlib.suppress(ConnectionError):
    unread.sendall(hello)
    for _ in range(10000):
        unread.sendall(alarm * 100)
    sys.exit("a peer may leave 120 MB unread")
is_served()

see_off(slow, b"")
see_off(good, b"")
listener.shutdown(socket.SHUT_RDWR)
assert process.wait(60) == 0, process.returncode
printed.seek(0)
lines = printed.read().decode().splitlines()
for wanted in ("hello", "alarm: help", "3 VLANs", "other fingerprints", "error[frame-too-long]: ", "error[output-full]: ",
               "error[count-mismatch]: watch_alarm_message"):
    assert any(line.startswith(wanted) for line in lines), wanted
