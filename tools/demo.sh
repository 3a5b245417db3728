#!/usr/bin/env bash
# A small site in a temporary directory, and the program at work on it and on the machine's own
# files. Every step is compared with what it must give.
#
#   tools/demo.sh PROGRAM [EXAMPLES]
#
# EXAMPLES is where the libraries and the client of examples/ are installed; without it they are
# left out.
set -uo pipefail

[ $# -eq 1 ] || [ $# -eq 2 ] || { echo "usage: demo.sh PROGRAM [EXAMPLES]" >&2; exit 2; }
program=$(realpath "$1")
examples=${2:+$(realpath "$2")}
site=$(mktemp -d)
trap 'rm -rf "$site"' EXIT
steps=0    # that were taken
failures=0 # promises that were broken

title() { printf '\n== %s\n\n' "$*"; }
indent() { sed 's/^/    /'; }

# What a person would type: the program and its arguments, quoted where the shell needs it.
typed() {
    printf '$ %s' "$(basename "$1")"
    local argument
    for argument in "${@:2}"; do
        case $argument in
        *[!-A-Za-z0-9_./:]* | '') printf " '%s'" "$argument" ;;
        *) printf ' %s' "$argument" ;;
        esac
    done
    printf '\n'
}

# broken TEXT…: tells that a promise was not kept.
broken() {
    printf '  BROKEN PROMISE: %s\n' "$*"
    failures=$((failures + 1))
}

# promise STATUS RESULT COMMAND…: runs the command and shows what comes out of it; the exit status
# and the lines on standard output must be those.
promise() {
    local status=$1 result=$2 printed got
    shift 2
    typed "$@"
    printed=$("$@" 2>"$site/messages")
    got=$?
    indent <"$site/messages"
    [ -z "$printed" ] || indent <<<"$printed"
    [ "$got" -eq 0 ] || printf '    (exit status %d)\n' "$got"
    [ "$got" -eq "$status" ] || broken "exit status $got and not $status"
    [ "$printed" = "$result" ] || broken "it printed '$printed' and not '$result'"
    steps=$((steps + 1))
}

# step STATUS RESULT ARGUMENT…: the same with the program.
step() {
    promise "$1" "$2" "$program" "${@:3}"
}

# because TEXT: the explanation of the last search has that line.
because() {
    grep -qxF "$1" "$site/messages" || broken "the explanation does not say '$1'"
}

# The first of the directories that has the file, found without the program.
first_with() {
    local file=$1 directory
    shift
    for directory in "$@"; do
        [ ! -e "$directory/$file" ] || { printf '%s/%s' "$directory" "$file"; return; }
    done
}

# ---- The site

mkdir -p "$site"/{settings,models,projects/bridge,home/models,work/drafts}
touch "$site"/models/plate.model "$site"/home/models/{plate,bolt}.model \
    "$site"/projects/bridge/deck.model "$site"/work/drafts/girder.model "$site"/work/sketch.model
cat >"$site/settings/DUXAdmin.toml" <<TOML
# Where the models of this site are, the approved ones first.
DUX_SEARCH_PATH = "$site/models:\$ENGINEER/models:\$\$PROJECT"

PROJECT = '$site/projects/bridge'   # in work until the spring
TOML
export ZOR_SETTINGS_PATH=$site/settings ENGINEER=$site/home
cd "$site/work" || exit 2

title "A site, its files, and the settings that say where they are"
(cd "$site" && find . -name '*.model' | sort) | indent
printf '\nENGINEER is %s\n%s:\n' "$ENGINEER" "$site/settings/DUXAdmin.toml"
indent <"$site/settings/DUXAdmin.toml"

title "Each file is found where the search path says, and here is why"
step 0 "$site/models/plate.model" search plate.model --explain
because "  found      $site/models/plate.model"
step 0 "$site/home/models/bolt.model" search bolt.model --explain
because "  \$ENGINEER gives $site/home/models"
because "  not there  $site/models/bolt.model"
because "  found      $site/home/models/bolt.model"
step 0 "$site/projects/bridge/deck.model" search deck.model --explain
because "  \$\$PROJECT gives $site/projects/bridge"
because "  found      $site/projects/bridge/deck.model"
step 0 "drafts/girder.model" search drafts/girder.model --explain
because "in the directory that the name gives:"
because "  found      drafts/girder.model"
step 0 "sketch.model" search sketch.model --explain
because "in the current directory:"
because "  found      sketch.model"
step 1 "" search tower.model --explain
because "not found"
# An approved model goes before the one that the name itself points to.
step 0 "$site/models/plate.model" search "$site/home/models/plate.model"

title "Real files of this machine: headers along a path list and along the search path"
for header in stdio.h linux/limits.h; do
    step 0 "$(first_with "$header" /usr/include /usr/local/include)" \
        find "$header" /usr/include:/usr/local/include
done
step 0 "exists=1 readable=1 writable=$([ -w /usr/include/stdio.h ] && echo 1 || echo 0) executable=0" \
    check /usr/include/stdio.h
step 0 "" settings put DUXAdmin PROJECT /usr/local/include:/usr/include
stdlib=$(first_with stdlib.h /usr/local/include /usr/include)
step 0 "$stdlib" search stdlib.h --explain
because "  \$\$PROJECT gives /usr/local/include:/usr/include"
because "  found      $stdlib"

title "Settings are kept and removed; what people wrote in the file stays"
before=$(sha256sum "$site/settings/DUXAdmin.toml")
step 1 "" settings get DUXAdmin REVIEWER
step 0 "" settings put DUXAdmin REVIEWER 'Ann "the eye" Lee'
step 0 'Ann "the eye" Lee' settings get DUXAdmin REVIEWER
step 0 $'DUX_SEARCH_PATH\nPROJECT\nREVIEWER' settings list DUXAdmin
indent <"$site/settings/DUXAdmin.toml"
step 0 "" settings remove DUXAdmin REVIEWER
step 1 "" settings get DUXAdmin REVIEWER
[ "$before" = "$(sha256sum "$site/settings/DUXAdmin.toml")" ] ||
    broken "the settings file is not byte for byte what it was"
grep -q '^# Where the models of this site are' "$site/settings/DUXAdmin.toml" ||
    broken "a comment is gone"

if [ -n "$examples" ]; then
    title "A schema library is found, checked and loaded by its name"
    step 1 "library libBicycle.so" schema check Bicycle
    export LD_LIBRARY_PATH=$examples/lib
    echo "With LD_LIBRARY_PATH=$LD_LIBRARY_PATH:"
    step 0 "$examples/lib/libBicycle.so" find libBicycle.so "$LD_LIBRARY_PATH"
    step 0 "" schema check Bicycle
    step 0 "" schema load Bicycle
    step 0 "Assembly Bicycle" container Assembly Bicycle

    title "A security library decides by settings what the users of another program may do"
    export ZOR_DICTIONARY_PATH=$examples/share/zor/dictionary
    echo "With ZOR_DICTIONARY_PATH=$ZOR_DICTIONARY_PATH:"
    indent <"$ZOR_DICTIONARY_PATH/security.toml"
    step 0 "" settings put SiteRights ben "add Wheel"
    whole="Assembly of the schema Bicycle, 2 kinds of parts:
1 x Frame
2 x Wheel"
    promise 0 "ben may not add a Frame
Assembly of the schema Bicycle, 1 kinds of parts:
2 x Wheel" "$examples/bin/bicycle" ben
    step 0 "" settings put SiteRights ben "add Wheel, add Frame"
    promise 0 "$whole" "$examples/bin/bicycle" ben
    step 0 "$site/settings/SiteRights.toml:1" settings get --origin SiteRights ben
fi

echo
if [ "$failures" -gt 0 ]; then
    echo "$failures promises were broken in $steps steps."
    exit 1
fi
echo "All went as promised: $steps steps."
