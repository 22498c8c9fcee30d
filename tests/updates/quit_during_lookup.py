"""quit_during_lookup.py PROGRAM INFO.JSON: checks that the program ends at once while a host name lookup is pending.

The test runs in its own namespaces. A name server on a loopback address accepts every query and never responds. Another
information dictionary is mounted over the program's own. The exit status is 77 if namespaces are not allowed."""

import fcntl
import json
import os
import signal
import socket
import struct
import subprocess
import sys
import tempfile

SKIPPED = 77
# The time limit of the program in seconds. The system's resolver would take five attempts of 30 seconds each.
CEILING = 75
RESOLVER = "nameserver 127.0.0.1\noptions timeout:30 attempts:5\n"
NAMESPACES = ["unshare", "--user", "--map-root-user", "--mount", "--net", "--pid", "--fork", "--kill-child"]


def bring_up_loopback():
    up_and_running, get_flags, set_flags = 0x41, 0x8913, 0x8914
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        request = fcntl.ioctl(any_socket, get_flags, struct.pack("16sH14x", b"lo", 0))
        flags = struct.unpack("16sH14x", request)[1]
        fcntl.ioctl(any_socket, set_flags, struct.pack("16sH14x", b"lo", flags | up_and_running))


def mount_over(folder, target, content):
    source = tempfile.NamedTemporaryFile("w", dir=folder, delete=False)
    source.write(content)
    source.close()
    subprocess.run(["mount", "--bind", source.name, os.path.realpath(target)], check=True)


def silent_name_server():
    server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    server.bind(("127.0.0.1", 53))
    server.settimeout(CEILING)
    return server


def run_in_namespaces(program, info, folder):
    bring_up_loopback()
    mount_over(folder, "/etc/resolv.conf", RESOLVER)
    mount_over(folder, "/etc/nsswitch.conf", "passwd: files\ngroup: files\nhosts: dns\n")
    # A key of zeros. It is never used, as no feed arrives.
    mount_over(
        folder, info, json.dumps({"SUFeedURL": "https://feed.stackreel.test/feed", "SUPublicEDKey": "A" * 43 + "="})
    )
    server = silent_name_server()
    environment = dict(os.environ, HOME=folder, XDG_STATE_HOME=folder, QT_QPA_PLATFORM="offscreen")
    running = subprocess.Popen([program], env=environment)
    query = server.recv(512)
    assert b"\x04feed\x09stackreel\x04test" in query, query
    running.send_signal(signal.SIGTERM)
    try:
        status = running.wait(CEILING)
    except subprocess.TimeoutExpired:
        sys.exit("the program waits for the name server")
    assert status == 0, status


def main():
    if len(sys.argv) == 4:
        run_in_namespaces(*sys.argv[1:])
        return
    if subprocess.run([*NAMESPACES, "true"], stderr=subprocess.DEVNULL).returncode != 0:
        print("namespaces are not allowed here")
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory() as folder:
        sys.exit(subprocess.run([*NAMESPACES, sys.executable, *sys.argv, folder]).returncode)


main()
