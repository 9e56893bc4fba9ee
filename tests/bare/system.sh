# shellcheck shell=bash
# A bare Debian 12 in the folder $system, made by whoever sources this and removed when that ends.
#
# It sees the places from which this machine gets its packages and nothing else of this machine. Needs
# root. BARE_KEEP=1 keeps the system; BARE_PACKAGES=FOLDER keeps downloaded packages there for next time.

[[ $(id -u) -eq 0 ]] || { echo "$0: needs root, for debootstrap and chroot" >&2; exit 2; }

release=bookworm
system=$(mktemp -d -t depcompare-bare.XXXXXX)
chmod 755 "$system"

say() { printf '\n== bare: %s\n' "$*" >&2; }

unmount() {
    local place
    for place in proc dev/pts; do
        mountpoint -q "$system/$place" && umount "$system/$place"
    done
    return 0
}
leave() {
    local status=$?
    unmount
    if [[ -n ${BARE_PACKAGES:-} && -d $system/var/cache/apt/archives ]]; then
        find "$system/var/cache/apt/archives" -name '*.deb' -exec cp -nt "$BARE_PACKAGES" {} +
    fi
    if [[ -n ${BARE_KEEP:-} ]]; then
        say "kept in $system"
    else
        rm -rf --one-file-system "$system"
    fi
    exit "$status"
}
trap leave EXIT

# The mirror of this machine: the first address in its list of sources.
mirror() {
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources \
        2>/dev/null | grep -E '^(deb |URIs:)' | grep -oE 'https?://[^ ]+' | head -n 1
}

inside() { # COMMAND...: in the bare system, with an environment of its own, in its folder /checkout
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        ${http_proxy:+http_proxy="$http_proxy"} ${https_proxy:+https_proxy="$https_proxy"} \
        chroot "$system" bash -c 'cd /checkout && "$@"' inside "$@" </dev/null
}

say "making Debian $release"
cached=(${BARE_PACKAGES:+--cache-dir="$BARE_PACKAGES"})
[[ -z ${BARE_PACKAGES:-} ]] || mkdir -p "$BARE_PACKAGES"
debootstrap --variant=minbase "${cached[@]}" "$release" "$system" "$(mirror)" >/dev/null
rm -f "$system/etc/apt/sources.list"
cp /etc/resolv.conf "$system/etc/resolv.conf"
cp -r /etc/apt/sources.list.d "$system/etc/apt/"
[[ ! -e /etc/apt/sources.list ]] || cp /etc/apt/sources.list "$system/etc/apt/"
if [[ -n ${BARE_PACKAGES:-} ]]; then
    find "$BARE_PACKAGES" -name '*.deb' -exec cp -t "$system/var/cache/apt/archives" {} +
fi
mount -t proc proc "$system/proc"
mount -t devpts devpts "$system/dev/pts"  # for the tests on a terminal
mkdir "$system/checkout"
