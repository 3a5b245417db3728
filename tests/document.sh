#!/usr/bin/env bash
# What a document shows is true:
# - the text of each block of C, C++ or TOML is that of the file to which the line above it links;
# - each command of its "console" blocks, run in the order of the document in an empty folder,
#   prints what stands below it. A command that ends in "<<'END'" goes on in the lines that begin
#   with "> ", up to "> END".
#
#   document.sh DOCUMENT FOLDER…
#
# The programs and libraries in the folders that are made of a source the document links to are put
# into the empty folder; all programs in them are found by name.
set -euo pipefail
document=$(realpath "$1")
shift
mapfile -t programs < <(realpath "$@")
folder=$(dirname "$document")
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

fail() {
    printf '%s: %s\n' "$document" "$*" >&2
    exit 1
}

# "FILE<newline>" of the source, then its text, each to a file of its own: 1.name, 1.text, 2.name, …
mkdir "$directory/blocks" "$directory/run"
awk -v out="$directory/blocks/" '
    inside && $0 == "```" { inside = 0; close(file); next }
    inside { print > file; next }
    /^```(c|cpp|toml)$/ {
        inside = 1
        ++count
        file = out count ".text"
        printf "" > file
        name = match(above, /\]\([^)]*\)[^)]*$/) ? substr(above, RSTART + 2) : ""
        sub(/\).*/, "", name)
        print name > (out count ".name")
        next
    }
    $0 != "" { above = $0 }
' "$document"
for name in "$directory"/blocks/*.name; do
    [ -e "$name" ] || continue
    source=$(cat "$name")
    [ -f "$folder/$source" ] || fail "a block is not below a link to its source, but to '$source'"
    diff --label "$document" --label "$source" -u "${name%.name}.text" "$folder/$source"
done

# The links of the document lead somewhere.
{ grep -oE '\]\([^)#:]+' "$document" || true; } | sed 's/^](//' | while IFS= read -r link; do
    [ -e "$folder/$link" ] || fail "the link to $link leads nowhere"
    stem=$(basename "${link%.*}")
    case $link in
    *.c | *.cpp)
        for made in "${programs[@]/%//$stem}" "${programs[@]/%//lib$stem.so}"; do
            [ ! -e "$made" ] || ln -sf "$made" "$directory/run/"
        done
        ;;
    esac
done

awk '$0 == "```" { inside = 0 } inside { print } $0 == "```console" { inside = 1 }' "$document" \
    >"$directory/expected"
for variable in $(compgen -e | grep -E '^(ZOR_|DUX_|LANG|LC_|XDG_|ARCHIVE$|TERM$|LD_LIBRARY_PATH$)'); do
    unset "$variable"
done
PATH=$(IFS=: && printf '%s' "${programs[*]}"):$PATH
export PATH HOME=$directory/run
cd "$directory/run"
command=
run() {
    [ -z "$command" ] || eval "$command" </dev/null >>"$directory/printed" 2>&1 || true
    command=
}
: >"$directory/printed"
here=no
while IFS= read -r line <&3; do
    case $here:$line in
    no:'$ '*)
        run
        command=${line#\$ }
        [[ $line != *"<<'END'" ]] || here=yes
        ;;
    yes:'> '* | yes:'>')
        [ "$line" != '> END' ] || here=no
        line=${line#>}
        command+=$'\n'${line# }
        line=">$line"
        ;;
    *)
        run
        continue
        ;;
    esac
    printf '%s\n' "$line" >>"$directory/printed"
done 3<"$directory/expected"
run
diff --label "$document" --label "printed" -u "$directory/expected" "$directory/printed"
