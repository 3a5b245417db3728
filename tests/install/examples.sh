#!/usr/bin/env bash
# examples.sh SOURCE BUILD CXX: installs the build into a folder, builds each example against it as its README says,
# and compares what the client prints.
set -euo pipefail

source=$1
build=$2
cxx=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset DESTDIR
export CMAKE_GENERATOR=Ninja # what this build has, too

prefix=$work/prefix
site=$work/site
cmake --install "$build" --prefix "$prefix" >/dev/null
libraries=$(dirname "$(find "$prefix" -name libKW4TOOLS.so)")

for each in schema security client guide; do
    cmake -S "$source/examples/$each" -B "$work/$each" -DCMAKE_CXX_COMPILER="$cxx" \
        -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_STANDARD=17 -DCMAKE_CXX_EXTENSIONS=OFF \
        -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror" >/dev/null
    cmake --build "$work/$each" >/dev/null
    cmake --install "$work/$each" --prefix "$site" >/dev/null
done

# What the client prints for the user, standard error included, and its exit status.
run() {
    (cd / && LD_LIBRARY_PATH=$site/lib:$libraries ZOR_SETTINGS_PATH=$site/etc "$site/bin/bicycle" "$@" 2>&1) ||
        echo "exit status $?"
}

expect() {
    local what=$1 printed=$2 expected=$3
    [ "$printed" = "$expected" ] || {
        printf '%s: printed\n%s\ninstead of\n%s\n' "$what" "$printed" "$expected"
        exit 1
    }
    echo "$what: as it should be."
}

if readelf -d "$site/bin/bicycle" | grep -E 'NEEDED.*(Bicycle|SiteSecurity)'; then
    echo "the client is linked with a library that it should not know"
    exit 1
fi

whole='Assembly of the schema Bicycle, 2 kinds of parts:
1 x Frame
2 x Wheel'
expect "without a dictionary" "$(run anna)" "Nobody looks after rights here.
$whole"

export ZOR_DICTIONARY_PATH=$site/share/zor/dictionary
expect "a user who may do all" "$(run anna)" "$whole"
expect "a user who may do some" "$(run ben)" "$(sed -n '/^ben may not/,/^```$/p' "$source/examples/README.md" | sed '$d')"
expect "a user nobody knows" "$(run carl)" 'carl may not add a Frame
carl may not add a Wheel
Assembly of the schema Bicycle, 0 kinds of parts:'

mv "$site/lib/libSiteSecurity.so" "$site/lib/gone"
[[ $(run anna) == *"security.toml: line 2: cannot load the library: "*"exit status 1" ]] ||
    expect "a library that is gone" "$(run anna)" "an error that names file and line"
echo "a library that is gone: as it should be."

mv "$site/lib/libBicycle.so" "$site/lib/gone"
message='The schema library libBicycle.so was not found or cannot be loaded.'
expect "a schema that is gone" "$(run anna)" "ZORDuxServicesMsg (0x20003): $message
ZORDuxServicesMsg raised in VirtualServices/KW4TOOLS.m/src/ZORLoadExternalSchema, line 120
bicycle: ZORDuxServicesMsg (0x20003): $message
exit status 1"
