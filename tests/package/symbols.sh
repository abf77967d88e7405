#!/bin/sh
# Compares the libraries' exported symbols with the lists in package/symbols:
#   symbols.sh check|renew <source folder> <folder of the libraries>
# A list has one line per class and per free function, so that it stays readable; a class stands for all of its
# members. "renew" writes the lists again (cmake --build ... --target renew_symbols).
set -eu
job=$1 source=$2 libraries=$3
status=0

# Turns one demangled symbol per line into "class <name>" or "function <signature>".
classify() {
    awk '
    # The position of the arguments: the first parenthesis outside template arguments, except that of operator().
    function arguments(name,    i, c, depth) {
        for (i = 1; i <= length(name); i++) {
            c = substr(name, i, 1)
            if (c == "<") depth++
            else if (c == ">") depth--
            else if (c == "(" && depth == 0 && substr(name, i, 2) != "()") return i
            else if (c == "(" && depth == 0 && substr(name, i - 8, 8) != "operator") return i
        }
        return length(name) + 1
    }
    # The length of the part before the last "::" outside template arguments; 0 without one.
    function qualifier(name,    i, c, depth, last) {
        for (i = 1; i <= length(name); i++) {
            c = substr(name, i, 1)
            if (c == "<") depth++
            else if (c == ">") depth--
            else if (c == ":" && depth == 0 && substr(name, i, 2) == "::") last = i - 1
        }
        return last + 0
    }
    {
        if (sub(/^(vtable|VTT|typeinfo name|typeinfo) for /, "")) { print "class " $0; next }
        sub(/^guard variable for /, "")
        sub(/^((non-)?virtual|covariant return) thunk to /, "")
        name = substr($0, 1, arguments($0) - 1)
        owner = substr(name, 1, qualifier(name))
        # Owners that are namespaces; every other owner is a class.
        if (owner == "" || owner ~ /^(Zel|Zel::Allocation|ZelCommonFrames)$/) print "function " $0
        else print "class " owner
    }'
}

symbols_of() {
    nm -D --defined-only --demangle "$1" | sed 's/^[0-9a-f]* . //' | classify | LC_ALL=C sort -u
}

for library in libZelData libZelToolkit libZelHost libZelCommonFrames; do
    list=$source/package/symbols/$library.txt
    found=$(mktemp)
    symbols_of "$libraries/$library.so" >"$found"
    [ -s "$found" ] || { echo "$library.so shows nothing" >&2; status=1; }
    # Every exported name is declared in an installed header.
    for name in $(sed -E 's/^(class|function) //; s/\(.*//; s/.*:://; s/^operator.*//' "$found"); do
        if ! grep -qrw --include='*.h' --exclude='*_p.h' -e "$name" "$source/data" "$source/toolkit" "$source/host" \
            "$source/frames" "$source/dataviews" "$source/funds" "$source/editor" "$source/package"; then
            echo "$library.so shows $name, which no public header declares" >&2
            status=1
        fi
    done
    if [ "$job" = renew ]; then
        cp "$found" "$list"
    elif ! diff -u --label "promised by $library.txt" --label "shown by $library.so" "$list" "$found"; then
        status=1
    fi
    rm -f "$found"
done
if [ "$status" != 0 ] && [ "$job" = check ]; then
    echo "If the change is meant: cmake --build --preset release --target renew_symbols" >&2
fi
exit $status
