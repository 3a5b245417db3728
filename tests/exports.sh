#!/usr/bin/env bash
# exports.sh LIBRARY LIST…: whether the library exports just the names of the lists.
# A list has one demangled name a line; lines that begin with # are remarks.
set -euo pipefail

library=$1
shift
meant=$(mktemp)
exported=$(mktemp)
trap 'rm -f "$meant" "$exported"' EXIT

grep -hv '^#' "$@" | LC_ALL=C sort -u >"$meant"
# "<address> <type> <name>@@<version>"; the version's own symbol has type A.
nm -DC --defined-only "$library" | sed -nE 's/^[0-9a-f]+ [^A] (.*[^@])@@?[A-Z0-9_]+$/\1/p' |
    LC_ALL=C sort -u >"$exported"

if ! diff --unchanged-line-format= --old-line-format='meant to be exported, but not: %L' \
    --new-line-format='exported, but not meant to be: %L' "$meant" "$exported"; then
    exit 1
fi
echo "$(wc -l <"$exported") names exported by $library, all of them meant"
