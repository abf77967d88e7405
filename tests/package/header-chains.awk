# Orders headers for a compiler that is to see each of them alone: awk -f header-chains.awk <header>...
# Prints lines of headers. In the order of a line, what a header has behind it is what it includes itself, with all that
# follows from it; so it stands there as it would alone, and one reading serves them all.
# (A header by itself is a line of its own, always right, and always slow: each reads the toolkit's headers anew.)

FNR == 1 {
    header = FILENAME
    sub(/^[.][/]/, "", header)
    headers[++count] = header
    own[header] = 1
    depth = 0
    guarded = 0
    directives = 0
}
/^[ \t]*#/ {
    line = $0
    sub(/^[ \t]*#[ \t]*/, "", line)
    if (line !~ /^pragma/) directives++
    if (line ~ /^if/) {
        # A guard around the whole header is no condition.
        if (directives == 1 && line ~ /^ifndef/) guarded = 1
        depth++
    }
    if (line ~ /^endif/) depth--
    if (line ~ /^include[ \t]*[<"]/) {
        name = line
        sub(/^include[ \t]*/, "", name)
        sub(/^[<"]/, "", name)
        sub(/[>"].*/, "", name)
        included[header, ++includes[header]] = name
        conditional[header, includes[header]] = depth > guarded
    }
}

# Everything that a header brings with it: surely[header, name], and perhaps[header, name] under a condition, too.
function follow(header, from, sure,    i, name, certain) {
    for (i = 1; i <= includes[from]; i++) {
        name = included[from, i]
        certain = sure && !conditional[from, i]
        # Once more when it turns out to be certain.
        if ((header, name) in perhaps && (!certain || (header, name) in surely)) continue
        if (!((header, name) in perhaps)) brought[header, ++size[header]] = name
        perhaps[header, name] = 1
        if (certain) surely[header, name] = 1
        if (name in own) follow(header, name, certain)
    }
}

# Whether header a, and all that it leaves behind, is surely there with header b, too.
function within(a, b,    i) {
    if (!((b, a) in surely)) return 0
    for (i = 1; i <= size[a]; i++)
        if (!((b, brought[a, i]) in surely)) return 0
    return 1
}

END {
    for (i = 1; i <= count; i++) follow(headers[i], headers[i], 1)
    # Those that bring little first.
    for (i = 2; i <= count; i++) {
        header = headers[i]
        for (j = i - 1; j >= 1 && size[headers[j]] > size[header]; j--) headers[j + 1] = headers[j]
        headers[j + 1] = header
    }
    for (i = 1; i <= count; i++) {
        header = headers[i]
        chosen = 0
        for (j = 1; j <= chains; j++)
            if (within(last[j], header) && (!chosen || size[last[j]] > size[last[chosen]])) chosen = j
        if (!chosen) chosen = ++chains
        chain[chosen] = chain[chosen] (chain[chosen] == "" ? "" : " ") header
        last[chosen] = header
    }
    for (j = 1; j <= chains; j++) print chain[j]
}
