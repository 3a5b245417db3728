#!/usr/bin/env bash
# What a document shows is true: its C++ is the text of a source that is built and tested, and each
# command of its "console" blocks prints what stands below it.
#
#   readme.sh DOCUMENT SOURCE DIRECTORY-OF-THE-PROGRAM
set -euo pipefail
document=$1 source=$2
PATH=$(realpath "$3"):$PATH

# The lines of the fenced blocks of that language.
blocks() {
    awk -v begin="\`\`\`$1" '$0 == "```" { inside = 0 } inside { print } $0 == begin { inside = 1 }' \
        "$document"
}

diff <(blocks cpp) "$source"

directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
blocks console >"$directory/expected"
cd "$directory"
unset ARCHIVE
while IFS= read -r line; do
    [[ $line == '$ '* ]] || continue
    printf '%s\n' "$line" >>printed
    eval "${line#\$ }" >>printed 2>&1
done <expected
diff expected printed
[ -s expected ]
