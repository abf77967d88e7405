#!/usr/bin/awk -f
# Converts a public header for Doxygen: tools/doxygen-filter.awk <header>
# In these headers a comment documents every declaration below it, up to the next comment, blank line or access
# specifier; the filter repeats the comment for each of them. An accessor or signal without a comment gets a comment
# that names its property. Overridden Qt virtuals and defaulted or deleted functions are removed. A constructor with
# only a parent gets a comment about ownership. Line numbers do not change.
function commented(line, comment) {
    match(line, /[^ \t]/)
    return substr(line, 1, RSTART - 1) "/** " comment " */ " substr(line, RSTART)
}
# Remembers which function belongs to which property, from "Q_PROPERTY(type Name READ reader WRITE writer ...)".
function property(text,    word, n, i, name) {
    gsub(/[()]/, " ", text)
    n = split(text, word, " ")
    for (i = 2; i <= n; i++) {
        if (word[i] == "READ") { name = word[i - 1]; about[word[i + 1]] = "The property " name "." }
        if (word[i] == "WRITE") about[word[i + 1]] = "Writes the property " name "."
        if (word[i] == "NOTIFY" && !(word[i + 1] in about)) about[word[i + 1]] = "The property " name " has another value."
    }
}
{
    line = $0
    text = line
    sub(/^[ \t]+/, "", text)
    if (text ~ /^\/\/\/[^<]/ || text == "///") {
        if (!inComment) doc = ""
        inComment = 1
        sub(/^\/\/\/ ?/, "", text)
        doc = doc " " text
        print line
        next
    }
    if (text ~ /^Q_PROPERTY/ || openProperty != "") {
        openProperty = openProperty " " text
        if (text ~ /\)$/) { property(openProperty); openProperty = "" }
        print line
        next
    }
    fresh = inComment # the comment is directly above this line
    inComment = 0
    if (text == "" || text ~ /^(public|protected|private|Q_SIGNALS|public Q_SLOTS|protected Q_SLOTS|private Q_SLOTS)[ a-zA-Z_]*:$/ ||
        text ~ /^\/\/([^\/]|$)/) {
        if (!within) doc = ""
        print line
        next
    }
    starts = !within
    code = text
    gsub(/"([^"\\]|\\.)*"/, "", code)
    sub(/[ \t]*\/\/.*$/, "", code)
    opened = gsub(/\{/, "{", code); closed = gsub(/\}/, "}", code)
    opens = code ~ /^(class|struct|namespace|extern "C"|extern|enum)[^;]*\{$/ || code == "{"
    round += gsub(/\(/, "(", code) - gsub(/\)/, ")", code)
    if (starts && code !~ /^[{}]/ && code !~ /^(Q_OBJECT|Q_GADGET|Q_PROPERTY|Q_ENUM|#|friend class|using |explicit operator)/ || fresh) {
        own = fresh || line ~ /\/\/\/</
        if ((code ~ /[^A-Za-z_][a-z][a-zA-Z]*\([^;]*override[;{ ]/ && code !~ /(get|put)_/ || code ~ /= (default|delete);$/) && code ~ /[;}]$/) {
            print ""
            next
        }
        if (own || code ~ /override[;{ ]|^~/) {
            # The declaration has its own comment, or inherits that of the operation it overrides.
        } else if (match(code, /[A-Za-z_]+\(/) && substr(code, RSTART, RLENGTH - 1) in about) {
            line = commented(line, about[substr(code, RSTART, RLENGTH - 1)])
        } else if (doc != "") {
            line = commented(line, doc)
        } else if (code ~ /^(Q_INVOKABLE )?explicit [A-Za-z]+\(Q(Widget|Object) \*(parent|owner)( = nullptr)?\)/) {
            line = commented(line, "The parent owns the new one; without one its maker does.")
        }
    }
    if (opens) {
        doc = ""
        within = 0
    } else {
        depth += opened - closed
        if (depth < 0) depth = 0
        within = !(code ~ /[;}]$/ && round <= 0 && depth == 0) && code !~ /^#/ && code !~ /^Q_[A-Z]+(\(.*\))?$/
        if (code ~ /^\};?$/ && depth == 0) doc = ""
    }
    print line
}
