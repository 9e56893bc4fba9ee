#!/usr/bin/env bash
# archive.sh BUILD FOLDER: packs the program of a build of the preset package, with all that it needs but
# the C library, into FOLDER/depcompare-VERSION-linux-MACHINE.tar.zst. The program runs wherever that is
# unpacked. SOURCE_DATE_EPOCH is the time of its files.
set -euo pipefail

build=$1
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
name=depcompare-$version-linux-$(uname -m)
archive=$2/$name.tar.zst
tree=$build/archive/$name

cmake --build "$build" --target depcompare_archive
rm -rf "$tree"
for component in program library; do
    cmake --install "$build" --prefix "$tree" --strip --component "$component" >/dev/null
done
strip -o "$tree/bin/depcompare" "$build/archive/depcompare"
mv "$tree"/lib/*-linux-gnu*/* "$tree/lib"
rmdir "$tree"/lib/*-linux-gnu*

# package_of FILE: the Debian package that it is from.
package_of() {
    { dpkg -S "$1" || dpkg -S "/usr$1" || dpkg -S "$(realpath "$1")"; } 2>/dev/null | cut -d : -f 1 | head -n 1
}

needed=$(ldd "$tree/bin/depcompare")
if grep 'not found' <<<"$needed"; then
    exit 1
fi
packages=''
while read -r file; do
    package=$(package_of "$file")
    if [[ $package != libc6 ]]; then
        install -m 644 -s "$file" "$tree/lib"
        packages+=$package$'\n'
    fi
done < <(grep -o '=> /[^ ]*' <<<"$needed" | cut -c 4- | grep -v "^$(realpath "$tree")/")

# Whose headers were included, or whose libraries are inside, is known by the headers.
headers=$(ninja -C "$build" -t deps | grep -oE '^ +/usr/include/[^ ]+' | sort -u)
packages+=$(xargs dpkg -S <<<"$headers" | cut -d : -f 1)
mkdir "$tree/share/doc/depcompare/copyright"
while read -r package; do
    cp -L "/usr/share/doc/$package/copyright" "$tree/share/doc/depcompare/copyright/$package"
done < <(sort -u <<<"$packages")

tar --create --directory "$build/archive" --format=gnu --sort=name --mtime="@$SOURCE_DATE_EPOCH" \
    --owner=0 --group=0 --numeric-owner --mode=u=rwX,go=rX "$name" |
    zstd -19 --long=27 -T1 --quiet --force -o "$archive"
