#!/usr/bin/env bash
# The C++ in the comments of the public headers compiles. What is code there is told by the filter of
# the API pages, docs/plain_comments.awk. A paragraph with an opening brace on a line of its own
# defines something, and stands for itself; others are the statements of a function, in the
# surroundings of snippets.h. "…" stands for what the reader does.
#
#   snippets.sh REPOSITORY CXX HEADER…
set -euo pipefail
repository=$1
cxx=$2
shift 2

# Prints the snippets of a header, each in a namespace of its own, with the lines that they have in
# the header. A comment that belongs to several declarations is one snippet.
snippets() {
    awk '/^ *\/\/     / { $0 = $0 " //@" FNR } { print }' "$1" |
        awk -f "$repository/docs/plain_comments.awk" |
        awk -v header="$1" '
            $0 == "/// \\code{.cpp}" {
                inside = 1
                at = 0
                definitions = statements = ""
                next
            }
            !inside { next }
            $0 == "/// \\endcode" { inside = 0; end_paragraph(); snippet(); next }
            {
                text = substr($0, 5)
                if (text == "") {
                    end_paragraph()
                    next
                }
                match(text, / \/\/@[0-9]+$/)
                line = substr(text, RSTART + 4)
                if (!at)
                    at = line
                text = substr(text, 1, RSTART - 1)
                gsub(/…/, "static_assert(true);", text)
                paragraph = paragraph "#line " line " \"" header "\"\n" text "\n"
            }
            function end_paragraph() {
                if (paragraph ~ /\n[{]\n/)
                    definitions = definitions paragraph
                else
                    statements = statements paragraph
                paragraph = ""
            }
            function snippet() {
                if (seen[at]++)
                    return
                print "namespace Snippet" at " {\n" definitions
                print "class Snippet : Surroundings { void Run(); };\nvoid Snippet::Run() {"
                print statements "}\n}"
            }'
}

source=$(mktemp --suffix .cpp)
trap 'rm -f "$source"' EXIT
includes=()
{
    for header in "$@"; do
        includes+=(-I "$(dirname "$header")")
        printf '#include "%s"\n' "$(basename "$header")"
    done
    printf '#include "%s"\n' "$repository/tests/snippets.h"
    for header in "$@"; do
        printf 'namespace %s {\n' "Of_$(basename "$header" .h)"
        snippets "$header"
        printf '}\n'
    done
} >"$source"
count=$(grep -c '^namespace Snippet' "$source") || true
# Most headers have one.
[ $((2 * count)) -gt $# ] || {
    echo "Only $count snippets were found in the comments of $# headers."
    exit 1
}
# A snippet need not use all that it makes.
"$cxx" -std=c++17 -fsyntax-only -Wall -Wextra -Werror -Wno-unused "${includes[@]}" "$source"
echo "$count snippets compile."
