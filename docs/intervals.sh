#!/usr/bin/env bash
# Writes the page of the interval relation codes. A test compares it with docs/intervals.md; to make
# that anew:
#
#   docs/intervals.sh build/gcc/tools/kw4tools/kw4tools >docs/intervals.md
set -euo pipefail
program=$1

# row TITLE FIRST SECOND [OPTION…]: what the program says and draws.
row() {
    local title=$1 printed
    shift
    printed=$("$program" interval "$@" --draw)
    printf '\n### %s: %s\n\n```text\n$ kw4tools interval %s --draw\n%s\n```\n' \
        "$(head -1 <<<"$printed" | tr c C)" "$title" "$*" "$printed"
}

cat <<'TEXT'
# The interval relation codes

`SequenceInterval` compares two effectivity intervals of whole numbers. It returns a code, which
tells how they lie to each other, and writes the pieces that are not common to both: pairs of start
and end, and a start alone for a piece that is open. `kw4tools interval` prints both, and with
`--draw` a picture.

This page is written by `docs/intervals.sh`, which asks the library for each row.

In the pictures an open interval ends in `>`, and `|` is a single value. Values count in steps of 1
unless `--step` says otherwise. Code 8 does not exist.

| code | the intervals |
|---|---|
| 0 | do not meet |
| 1 | are identical |
| 2 | both bounded, the second inside the first |
| 3 | both bounded, the first starts and ends earlier |
| 4 | both bounded, the second starts and ends earlier |
| 5 | the first inside the second, which may be open |
| 6 | the second open, and starts inside the first |
| 7 | the second open, and starts at the first's end |
| 9 | the first open, same start |
| 10 | the first open, and starts at the second's end |
| 11 | the first open, and starts earlier |
| 12 | the first open, and starts inside the second |
| 13 | both open, the first starts earlier |

## Both bounded
TEXT
row 'the first ends before the second' 1:5 7:9
row 'the second ends before the first' 7:9 1:5
row 'identical' 10:20 10:20
row 'the second inside the first' 1:10 3:5
row 'the second inside the first, same start' 1:10 1:5
row 'the second inside the first, same end' 1:10 5:10
row 'the first starts and ends earlier' 1:5 3:8
row 'the second starts and ends earlier' 3:8 1:5
cat <<'TEXT'

The values of code 4 end with the start of the first interval; callers rely on it.
TEXT
row 'the first inside the second' 3:5 1:10
row 'the first inside the second, same start' 1:5 1:10
row 'the first inside the second, same end' 5:10 1:10
row 'a step of 10' 100:200 130:150 --step 10
cat <<'TEXT'

## The second open
TEXT
row 'the second starts behind the first' 1:5 7
row 'the second starts inside the first' 1:5 3
cat <<'TEXT'

The values of code 6 begin with the open piece.
TEXT
row "the second starts at the first's end" 1:5 5
row 'same start' 1:5 1
row 'the second starts earlier' 3:5 1
cat <<'TEXT'

## The first open
TEXT
row 'the first starts behind the second' 12 5:9
row 'same start' 5 5:9
cat <<'TEXT'

The values of code 9 end with -1, the mark of an open end; no other code has it.
TEXT
row "the first starts at the second's end" 9 5:9
row 'the first starts inside the second' 7 5:9
row 'the first starts earlier' 3 5:9
cat <<'TEXT'

Codes 10 to 12 tell one piece twice, and not what the first interval has behind the second's end.

## Both open
TEXT
row 'identical' 10 10
row 'the second starts earlier' 10 5
row 'the first starts earlier' 5 10
cat <<'TEXT'

## A bound of -1

-1 stands for no bound. So an interval that ends at -1 is open, and a computed bound of two bounded
intervals that happens to be -1 counts as absent, with its piece. When no piece remains, the result
is left as it was:
TEXT
row 'the piece -3 to -1 is lost' -3:5 0:5
