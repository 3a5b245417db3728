#!/usr/bin/env bash
# Every environment variable that the libraries and the program read stands in the tables of
# docs/environment.md, and these name no other.
#
#   environment.sh REPOSITORY
set -euo pipefail
cd "$1"

# The literals in capitals of the sources that look into the environment, but for those that are no
# variable. What kw4tools is told to ask for has no literal.
read_by_sources() {
    local sources
    mapfile -t sources < <(grep -rlE '\b(getenv|ZORGetEnv|OpenTraceFile)\(' \
        Platform/*/src VirtualServices/*/src tools | grep -v '/PathCommands.cpp$')
    grep -ohE '"[A-Z][A-Z_]{3,}"' "${sources[@]}" | tr -d '"' | grep -vxE 'DUX_SEARCH_PATH|POSIX' |
        sort -u
}

told() {
    awk -F'|' '/^\| `/ { print $2 }' docs/environment.md | grep -oE '[A-Z][A-Z_]+' | sort -u
}

differences=$(diff <(read_by_sources) <(told)) || {
    printf 'read by the sources (<), told by docs/environment.md (>):\n%s\n' "$differences"
    exit 1
}
