#!/usr/bin/env bash
# Every environment variable that the libraries read stands in the table of docs/environment.md, and
# the table names no other.
#
#   environment.sh REPOSITORY
set -euo pipefail
cd "$1"

# What is asked for by a literal name, and literals that can be nothing else; but a setting's name.
read_by_libraries() {
    grep -rhoE '(getenv|ZORGetEnv|Variable|IsSet|OpenTraceFile)\([^"()]*"[A-Z_]+"|"(ZOR|DUX|XDG|LC|LD)_[A-Z_]+"|"LANG[A-Z]*"' \
        Platform/*/src VirtualServices/*/src | grep -oE '"[A-Z_]+"' | tr -d '"' |
        grep -vx DUX_SEARCH_PATH | sort -u
}

told() {
    awk -F'|' '/^\| `/ { print $2 }' docs/environment.md | grep -oE '[A-Z][A-Z_]+' | sort -u
}

missing=$(comm -23 <(read_by_libraries) <(told))
[ -z "$missing" ] || { echo "not in docs/environment.md: $missing" && exit 1; }
for name in $(told); do
    grep -rq "\"$name\"" Platform/*/src VirtualServices/*/src tools ||
        { echo "nothing reads $name, which docs/environment.md names" && exit 1; }
done
