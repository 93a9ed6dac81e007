#!/bin/sh
# debian.sh PACKAGES SOURCES
# In a clean root with nothing of this project, what is in debian/tests holds for the packages of the directory PACKAGES,
# as it does for whoever types apt install: first without the programs, then with them. Wants root and Debian's mirror.
. "$(dirname "$0")/lib.sh"
root=$work/root
trap 'umount "$root/proc" 2>/dev/null || true; rm -rf "$work"' EXIT
mirror=$(sed -n 's/^URIs: //p;s/^deb \(\[.*\] \)\?\([^ ]*\) .*/\2/p' /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null | head -n 1)
quietly mmdebstrap --variant=apt --include=ca-certificates "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$root" "$mirror"
mount -t proc proc "$root/proc"
mkdir "$root/packages" "$root/sources"
cp "$1"/*.deb "$root/packages"
cp -r "$2/README.md" "$2/docs" "$2/debian" "$root/sources"
mkdir -p "$root/sources/tests/packaging"
cp -r "$2/tests/packaging/consumer" "$root/sources/tests/packaging"

inside() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root DEBIAN_FRONTEND=noninteractive \
        sh -c "cd /sources && $1" > "$work/log" 2>&1 || { echo "$1"; cat "$work/log"; exit 1; }
}
files() {
    find "$root" -xdev \( -path "$root/var" -o -path "$root/tmp" -o -path "$root/root" \) -prune -o -print | sort
}
install() {
    began=$(date +%s)
    inside "apt-get install -y --no-install-recommends $1"
    echo "installed in $(($(date +%s) - began)) s: $1"
}
try() {
    began=$(date +%s)
    inside "debian/tests/$1"
    echo "$1: $(($(date +%s) - began)) s"
}

inside "apt-get update"
install "g++ cmake make pkg-config python3 python3-pytest jq tshark"
files > "$work/before"

install "/packages/lib*.deb"
try pages
try cmake
install "/packages/python3-tlvmsg_*.deb"
try python
install "/packages/tlvmsg-tools_*.deb"
try family
try tools

# Libraries of two sonames stand beside each other, so that old programs keep starting; and each brings the platform's.
for name in libtlvmsg1 libtlvmsg-inspect1 libtlvmsg-forms1 libtlvmsg-schema1; do
    deb=$(ls "$root/packages/$name"_*.deb)
    dpkg-deb -c "$deb" | awk '{ print $6 }' | grep -v '/$' | grep -v "\.so\.1\|/usr/share/doc/$name/\|/usr/share/lintian/" &&
        { echo "$name has files that another soname's would have, too"; exit 1; }
    dpkg-deb -f "$deb" Depends | grep -q 'libosal-pelix\|libtlvmsg-' ||
        { echo "$name does not bring libosal-pelix"; exit 1; }
done

inside "apt-get purge -y tlvmsg-tools python3-tlvmsg 'libtlvmsg*' libosal-pelix"
files > "$work/after"
diff "$work/before" "$work/after" || { echo "removing leaves a trace"; exit 1; }
