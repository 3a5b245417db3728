#!/bin/sh
# hardened.sh FILE…: whether libraries and programs are built so that a mistake in memory is hard to
# use: read-only tables, no executable stack, any address, checked buffers and return addresses.
set -u
failed=0
for file in "$@"; do
    complain() { echo "$file: $1" && failed=1; }
    headers=$(readelf -Wl "$file") || exit 1
    dynamic=$(readelf -Wd "$file")
    symbols=$(readelf -W --dyn-syms "$file")
    echo "$headers" | grep -q 'Elf file type is DYN' || complain "loads at one address only"
    echo "$headers" | grep -q ' GNU_RELRO ' || complain "keeps its tables writable"
    echo "$dynamic" | grep -Eq 'BIND_NOW|FLAGS.*NOW' || complain "resolves symbols late"
    echo "$headers" | grep -Eq ' GNU_STACK .* RW +0x' || complain "has a stack to run code on"
    echo "$symbols" | grep -q ' __stack_chk_fail' || complain "does not check return addresses"
    case $file in *.so*) # the program has no buffers of its own
        echo "$symbols" | grep -Eq ' __[a-z]+_chk@' || complain "does not check buffer sizes" ;;
    esac
    echo "$symbols" | grep -q 'glibcxx_assert_fail' || complain "does not check positions"
done
exit $failed
