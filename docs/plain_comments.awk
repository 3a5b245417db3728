# Turns the plain comments of a public header into ones that Doxygen reads; an input filter of the
# Doxyfile. The headers are written to be read as they are, and these are their rules:
#
# - A comment belongs to the declarations below it, up to the next blank line or comment: each of
#   them gets it.
# - A comment behind a declaration, which may go on below, belongs to that declaration.
# - A comment with a blank line below it is about the file.
# - "// ---- Title" begins a group of declarations, which ends at the next one, at the end of the
#   file, or at its `#ifdef __cplusplus`.
# - Text with four blanks or more before it, and an empty line above, is code: C++ when a semicolon
#   stands in its first paragraph. A test compiles that (tests/snippets.sh).
# - Lists, tables and `code` mean what they mean in Markdown; all else is text and no command.

{ line[NR] = $0 }

END {
    print "/// \\file"
    for (at = 1; at <= NR;) {
        if (line[at] ~ /^ *\/\/ ---- /)
            section()
        else if (is_comment(line[at]))
            documented()
        else if (is_blank(line[at]) || starts_nothing(line[at]))
            print_plain(line[at++])
        else if (hidden())
            hidden_declaration()
        else
            declaration()
    }
    if (grouped)
        close_group()
}

function is_comment(text) { return text ~ /^ *\/\// }
function is_blank(text) { return text ~ /^ *$/ }
# Neither a declaration nor the end of one.
function starts_nothing(text) {
    return text ~ /^ *([}]|public:|protected:|private:|#(pragma|include|if|else|endif)|ZOR_DECLARE_)/
}

function print_plain(text) {
    if (grouped && text ~ /^#ifdef __cplusplus/)
        close_group()
    print text
}

function close_group() {
    print "///@}"
    grouped = 0
}

function section(    title) {
    if (grouped)
        close_group()
    title = line[at++]
    sub(/^ *\/\/ ---- /, "", title)
    print "/// \\name " title "\n///@{"
    grouped = 1
}

# A comment and the declarations below it.
function documented(    first, last) {
    first = at
    while (at <= NR && is_comment(line[at]))
        at++
    last = at - 1
    if (at > NR || is_blank(line[at])) {
        print "/// \\file"
        comment(first, last)
        return
    }
    do
        comment(first, last)
    while (declaration() && at <= NR && !is_comment(line[at]) && !is_blank(line[at]) &&
           !starts_nothing(line[at]) && !hidden())
}

# Prints one declaration with the body it may have. Returns 0 when it opens a scope whose
# declarations follow.
function declaration(    depth, text, head, scope) {
    if (line[at] ~ /^ *#/)
        return macro()
    head = line[at + (line[at] ~ /^ *template/)]
    scope = head ~ /^ *(class|struct|union|enum|namespace|extern "C")/
    depth = 0
    while (at <= NR) {
        text = without_comment(line[at])
        if (scope && text ~ /[{] *$/) {
            print line[at++]
            return 0
        }
        depth += gsub(/[({]/, "&", text) - gsub(/[)}]/, "&", text)
        if (depth == 0)
            print_with_comment()
        else
            print line[at++]
        if (depth == 0 && text ~ /[;,}] *$/)
            return 1
    }
    return 1
}

function macro() {
    while (line[at] ~ /\\$/)
        print line[at++]
    print line[at++]
    return 1
}

function without_comment(text) {
    sub(/ *\/\/.*/, "", text)
    return text
}

# The line at hand, and what its comment goes on with below.
function print_with_comment(    text, column) {
    text = line[at++]
    column = index(text, "// ")
    if (!column) {
        print text
        return
    }
    quoted = in_code = 0
    print substr(text, 1, column - 1) "///< " plain(substr(text, column + 3))
    while (is_comment(line[at]) && index(line[at], "//") == column)
        print substr(line[at], 1, column - 1) "///< " plain(substr(line[at++], column + 3))
}

# A destructor or a deleted function that has no comment is no name that anybody uses.
function hidden() { return line[at] ~ /^ *(virtual )?~| = delete;/ }
function hidden_declaration() {
    print "/// \\cond"
    declaration()
    print "/// \\endcond"
}

# The comment in those lines.
function comment(first, last,    i, text, code, above) {
    code = quoted = in_code = 0
    above = ""
    for (i = first; i <= last; ++i) {
        text = line[i]
        sub(/^ *\/\/ ?/, "", text)
        if (!code && above == "" && text ~ /^    /) {
            code = 1
            print "/// \\code{." language(i, last) "}"
        } else if (code && text !~ /^    / && !(text == "" && code_goes_on(i, last))) {
            code = 0
            print "/// \\endcode"
        }
        print "/// " (code ? substr(text, 5) : plain(text))
        above = text
    }
    if (code)
        print "/// \\endcode"
}

function code_goes_on(i, last) {
    return i < last && line[i + 1] ~ /^ *\/\/     /
}

function language(i, last) {
    for (; i <= last && line[i] !~ /^ *\/\/ ?$/; ++i)
        if (line[i] ~ /;/)
            return "cpp"
    return "unparsed"
}

# Text in which nothing is a command, but for the bars of tables. Doxygen takes `code` and what is
# quoted as it stands by itself; a quotation may go on in the next line.
function plain(text,    out, each) {
    if (text == "")
        quoted = 0
    out = ""
    while (text != "") {
        each = substr(text, 1, 1)
        text = substr(text, 2)
        if (each == "\"" && !in_code)
            quoted = !quoted
        else if (each == "`" && !quoted)
            in_code = !in_code
        else if (!quoted && !in_code && each ~ /[\\<>@#%*_]/)
            each = "\\" each
        out = out each
    }
    return out
}
