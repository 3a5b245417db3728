#!/usr/bin/env bash
# run.sh SOURCE BUILD CXX CC: installs the build into a folder, moves the folder, and builds against it: a consumer with
# CMake, one with pkg-config and the bare compiler, one in C, and the library itself on the installed platform.
set -euo pipefail

source=$1
build=$2
cxx=$3
cc=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset DESTDIR
export CMAKE_GENERATOR=Ninja # what this build has, too

cmake --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"
prefix=$work/prefix
libraries=$(dirname "$(find "$prefix" -name libKW4TOOLS.so)")

for each in KW4TOOLS ZORPLATFORM; do
    readelf -d "$libraries/lib$each.so.1" | grep -q "SONAME.*\[lib$each.so.1\]" || {
        echo "lib$each.so.1 does not say that it is that"
        exit 1
    }
done
"$prefix/bin/kw4tools" --version | grep -q '^kw4tools [0-9.]*$'
for each in man/man1/kw4tools.1.gz bash-completion/completions/kw4tools zsh/site-functions/_kw4tools \
    doc/kw4tools/examples/find_file.cpp doc/kw4tools/copyright; do
    [ -s "$prefix/share/$each" ] || {
        echo "$each is not installed"
        exit 1
    }
done
echo "The program runs where the tree was moved to, and its pages are there."

mkdir -p "$work/site/parts"
echo x >"$work/site/parts/plate"
export ZOR_SETTINGS_PATH=$work/settings

check() {
    local found
    found=$(LD_LIBRARY_PATH=$libraries "$1" plate "$work/site/none:$work/site/parts")
    [ "$found" = "$work/site/parts/plate" ] || {
        echo "$1 found '$found'"
        exit 1
    }
}

# The texts of errors come from the catalogs that were moved along with the library, wherever the program is started
# and by whichever path the library is found.
check_catalogs() {
    local expected='ZORDuxServicesMsg (0x20003): La bibliothèque de schéma libNobody.so est introuvable ou ne peut pas être chargée.'
    local path told
    ln -s "$libraries" "$work/link"
    for path in "$libraries" "$work/link" "${libraries#"$prefix"/}"; do
        told=$(cd "$prefix" && LANG=fr_FR.UTF-8 LC_ALL='' LC_MESSAGES='' LANGUAGE='' ZOR_CATALOG_PATH='' \
            LD_LIBRARY_PATH=$path "$1" Nobody 2>&1) && told="status 0: $told"
        [ "$told" = "$expected" ] || {
            printf 'with the libraries in %s, told\n%s\ninstead of\n%s\n' "$path" "$told" "$expected"
            exit 1
        }
    done
}

cmake -S "$source/tests/install/cmake_consumer" -B "$work/cmake" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
check "$work/cmake/consumer"
cmake -S "$source/tests/install/cmake_consumer" -B "$work/directory" -DCMAKE_CXX_COMPILER="$cxx" \
    -DKW4TOOLS_DIR="$libraries/cmake/KW4TOOLS" >/dev/null
echo "A consumer built with CMake works, and one that is told the package's directory is configured."
check_catalogs "$work/cmake/consumer"
echo "Catalogs are found where the tree was moved to."

export PKG_CONFIG_PATH=$libraries/pkgconfig
# shellcheck disable=SC2046
"$cxx" -std=c++17 -Wall -Wextra -Werror "$source/tests/install/consumer.cpp" -o "$work/plain" \
    $(pkg-config --cflags --libs kw4tools)
check "$work/plain"
echo "A consumer built with pkg-config works."

# shellcheck disable=SC2046
"$cc" -std=gnu11 -Wall -Wextra -Wpedantic -Werror "$source/tests/install/consumer.c" -o "$work/c" \
    $(pkg-config --cflags --libs kw4tools)
told=$(LD_LIBRARY_PATH=$libraries "$work/c")
[ "$told" = "bracket 3" ] || {
    echo "the program in C printed '$told'"
    exit 1
}
echo "A consumer in C works."

# Into absolute directories; what of it lies below the prefix is moved.
cmake -S "$source" -B "$work/library" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_BUILD_TYPE=Debug -DKW4TOOLS_PLATFORM=installed -DKW4TOOLS_TOOLS=OFF -DKW4TOOLS_TESTS=OFF \
    -DCMAKE_INSTALL_PREFIX="$work/early" -DCMAKE_INSTALL_LIBDIR="$work/absolute/lib" \
    -DCMAKE_INSTALL_INCLUDEDIR="$work/absolute/include" >/dev/null
cmake --build "$work/library" -j "$(nproc)" >/dev/null
echo "The library builds against the installed platform."

cmake --install "$work/library" >/dev/null
mv "$work/early" "$work/late"
if ldd "$work/absolute/lib/libKW4TOOLS.so" | grep 'not found'; then
    echo "The library does not find the platform that it was built against."
    exit 1
fi
# shellcheck disable=SC2046
"$cxx" -std=c++17 "$source/tests/install/consumer.cpp" -o "$work/absolute/consumer" \
    $(PKG_CONFIG_PATH=$work/absolute/lib/pkgconfig:$PKG_CONFIG_PATH pkg-config --cflags --libs kw4tools)
cmake -S "$source/tests/install/cmake_consumer" -B "$work/absolute/cmake" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_PREFIX_PATH="$prefix" -DKW4TOOLS_DIR="$work/absolute/lib/cmake/KW4TOOLS" >/dev/null
cmake --build "$work/absolute/cmake" >/dev/null
libraries=$work/absolute/lib:$libraries
check "$work/absolute/consumer"
check "$work/absolute/cmake/consumer"
echo "Consumers find it in absolute directories."
