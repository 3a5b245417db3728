#!/usr/bin/env bash
# package.sh DEB FOLDER: installs the package in the folder, which holds a bare Debian (made by debootstrap), runs what
# came with it, and purges it; nothing of it may be left. To be run as root.
set -euo pipefail

deb=$1
root=$2

# Shells in there look for /proc. The mount is seen by this script alone, and goes with it.
if [ ! -e "$root/proc/self" ]; then
    exec unshare --mount sh -c 'mount -t proc proc "$0/proc" && exec "$@"' "$root" "$0" "$deb" "$root"
fi

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C "$@"; }

expect() {
    local what=$1 printed=$2 expected=$3
    [ "$printed" = "$expected" ] || {
        printf '%s: printed\n%s\ninstead of\n%s\n' "$what" "$printed" "$expected"
        exit 1
    }
    echo "$what: as it should be."
}

listing() { inside find /usr /etc /var/lib/dpkg/info -not -path '*/__pycache__*' -print | sort; }

trap 'inside dpkg --purge kw4tools >/dev/null 2>&1 || true; rm -f "$root/tmp/kw4tools.deb"; rm -rf "$root/tmp/site"' EXIT
before=$(listing)
cp "$deb" "$root/tmp/kw4tools.deb"
inside dpkg --install /tmp/kw4tools.deb >/dev/null
echo "It installs with what is there."

version=$(dpkg-deb -f "$deb" Version)
expect "the program" "$(inside kw4tools --version)" "kw4tools $version"
expect "what packages built on it need" "$(dpkg-deb -I "$deb" shlibs)" \
    "libKW4TOOLS 1 kw4tools (>= $version)
libZORPLATFORM 1 kw4tools (>= $version)"
mkdir -p "$root/tmp/site/models"
touch "$root/tmp/site/models/plate.model"
inside env ZOR_SETTINGS_PATH=/tmp/site kw4tools settings put DUXAdmin DUX_SEARCH_PATH /tmp/site/models
expect "a search" "$(inside env ZOR_SETTINGS_PATH=/tmp/site kw4tools search plate.model)" \
    "/tmp/site/models/plate.model"
expect "its catalogs" "$(inside kw4tools status | sed -n 's/^catalog directory: //p')" \
    "/usr/share/zor/catalogs (exists)"
expect "the page" "$(inside gzip -dc /usr/share/man/man1/kw4tools.1.gz | sed -n '1s/ .*//p')" ".TH"
expect "its documents" "$(inside ls /usr/share/doc/kw4tools | tr '\n' ' ')" "changelog.gz copyright examples "
if [ -e "$root/usr/bin/bash" ]; then
    expect "the completion" "$(inside bash -c '
        . /usr/share/bash-completion/completions/kw4tools
        COMP_WORDS=(kw4tools settings g) COMP_CWORD=2; _kw4tools kw4tools; echo "${COMPREPLY[*]}"')" "get"
fi

inside dpkg --purge kw4tools >/dev/null
[ "$(listing)" = "$before" ] || {
    echo "the purge left or took something:"
    diff <(echo "$before") <(listing) || true
    exit 1
}
echo "Purged, nothing of it is left."
