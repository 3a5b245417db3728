#!/usr/bin/env bash
# What the completions offer, and that man understands the page.
#
#   completions.sh PAGES DIRECTORY-OF-THE-PROGRAM
set -euo pipefail
pages=$1
here=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
PATH=$(realpath "$2"):$PATH

site=$(mktemp -d)
trap 'rm -rf "$site"' EXIT
mkdir "$site/settings"
cat >"$site/settings/DUXAdmin.toml" <<'TOML'
DUX_SEARCH_PATH = "a"
DUX_OTHER = "b"
"two words" = "c"
TOML
cp "$site/settings/DUXAdmin.toml" "$site/my settings.toml"
printf '"a $b" = "x"\nshape = "y"\n' >"$site/settings/My file.toml"
touch "$site/settings/site.toml" "$site/parts.txt" "$site/party.txt"
export ZOR_SETTINGS_PATH=$site/settings HOME=$site
cd "$site"

# shellcheck source=/dev/null
source "$pages/kw4tools.bash"

# What is offered for the last of the words, on one line.
offered() {
    COMP_WORDS=(kw4tools "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _kw4tools kw4tools
    local IFS=' '
    printf '%s' "${COMPREPLY[*]}"
}

# expect OFFER WORD…
expect() {
    local expected=$1 got
    shift
    got=$(offered "$@")
    [ "$got" = "$expected" ] || {
        printf "for '%s' bash is offered\n%s\nand not\n%s\n" "$*" "$got" "$expected"
        exit 1
    }
}

expect 'settings status search split schema' s
expect 'get' settings g
expect 'get put remove list edit' settings ''
expect 'DUXAdmin My\ file site' settings get ''
expect 'site' settings edit s
expect 'DUX_SEARCH_PATH DUX_OTHER two\ words' settings get DUXAdmin ''
expect 'DUX_OTHER' settings put DUXAdmin DUX_O
expect '' settings put DUXAdmin DUX_OTHER ''
expect 'two\ words' settings remove DUXAdmin t
expect 'two\ words' settings remove DUXAdmin 'two\ w'
expect 'DUX_OTHER' --separator , settings get --origin DUXAdmin DUX_O
expect 'DUX_OTHER' settings get -- DUXAdmin DUX_O
expect 'DUX_OTHER' settings get './my\ settings.toml' DUX_O
expect 'DUX_OTHER' settings get '~/my\ settings.toml' DUX_O
expect '--origin' settings get --o
expect '--trace' split --t
expect './settings' settings get ./s
expect 'parts.txt party.txt' check part
expect 'parts.txt' report party.txt parts
expect 'ZOR_SETTINGS_PATH' env ZOR_SETTINGS
expect '' find part
expect 'parts.txt party.txt' schema load --path part
expect 'parts.txt party.txt' schema load --path = part
expect '' --separator s
# Words are what the shell makes of them.
expect 'My\ file' settings get 'My\ f'
expect 'a\ \$b shape' settings get 'My\ file' ''
expect 'a\ \$b' settings get "'My file'" 'a\ '
expect 'a \$b' settings get '"My file"' '"a '
expect 'a $b' settings get 'My\ file' "'a "
echo "bash completes commands, options, settings files, settings, files and variables."

if command -v zsh >/dev/null; then
    "$here/completions.zsh" "$pages"
    echo "zsh completes them, too."
else
    echo "zsh is not here: its completion was not looked at."
fi

if command -v groff >/dev/null; then
    groff -man -ww -z "$pages/kw4tools.1" 2>&1 | tee "$site/warnings"
    [ ! -s "$site/warnings" ]
    echo "roff has nothing to say about the page."
else
    echo "groff is not here: the page was not looked at."
fi
