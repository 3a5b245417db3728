#!/usr/bin/env zsh
# What zsh offers, asked of one that has a terminal; completions.sh made the settings.
#
#   completions.zsh PAGES
zmodload zsh/zpty
directory=$(mktemp -d)
trap 'rm -rf $directory' EXIT
# Prints "{{OFFER|OFFER…}}" at the tabulator. A call of compadd that fills an array offers nothing.
cat >$directory/setup <<END
fpath=(${(q)1} \$fpath)
END
cat >>$directory/setup <<'END'
autoload -Uz compinit
compinit -u -D
compadd() {
    local -a matching
    if [[ ${@[1,(i)(-|--)]} != *-(O|A|D)\ * ]]; then
        builtin compadd -O matching "$@"
        offers+=($matching)
    fi
    builtin compadd "$@"
}
offer() {
    offers=()
    _main_complete
    print -r -- "{{${(j:|:)offers}}}"
}
zle -C offer complete-word offer
bindkey '^I' offer
bindkey '^U' kill-whole-line
unsetopt always_last_prompt beep
PS1=
END
zpty zsh zsh -f -i
zpty -w zsh "source ${(q)directory}/setup"

# expect OFFERS LINE
expect() {
    local printed
    zpty -n -w zsh "kw4tools $2"$'\t'
    zpty -r zsh printed '*{{*}}*'
    zpty -n -w zsh $'\C-u'
    printed=${${printed##*\{\{}%%\}\}*}
    [[ $printed == $1 ]] || {
        print -r -- "for '$2' zsh is offered"$'\n'"$printed"$'\n'"and not"$'\n'"$1"
        exit 1
    }
}

expect 'get|put|remove|list|edit' 'settings '
expect 'DUXAdmin|My file|site' 'settings get '
expect 'site' 'settings edit s'
expect 'DUX_SEARCH_PATH|DUX_OTHER|two words' 'settings get DUXAdmin '
expect 'DUX_OTHER' 'settings put DUXAdmin DUX_O'
expect 'two words' 'settings remove DUXAdmin two\ w'
expect 'DUX_OTHER' 'settings get --origin DUXAdmin DUX_O'
expect 'DUX_OTHER' 'settings get ./my\ settings.toml DUX_O'
expect 'DUX_OTHER' 'settings get ~/my\ settings.toml DUX_O'
expect 'ZOR_SETTINGS_PATH' 'env ZOR_SETTINGS'
expect 'parts.txt|party.txt' 'check part'
expect 'a $b|shape' 'settings get My\ file '
expect 'parts.txt|party.txt' 'schema load --path=part'
