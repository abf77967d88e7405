# Groups headers so that one compilation checks several of them: awk -f header-chains.awk <header>...
# Prints one line per compilation. In a line, each header includes all headers before it and everything that they
# include. So each header sees only what it includes itself, just as if it were compiled alone.
# (One header per line would also be right but slow: each compilation reads Qt's headers again.)

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
        # The include guard around the whole header does not count as a condition.
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

# Collects everything that a header includes: perhaps[header, name], and surely[header, name] when no condition is
# involved.
function follow(header, from, sure,    i, name, certain) {
    for (i = 1; i <= includes[from]; i++) {
        name = included[from, i]
        certain = sure && !conditional[from, i]
        # Follow a name again when it is certain now and was not before.
        if ((header, name) in perhaps && (!certain || (header, name) in surely)) continue
        if (!((header, name) in perhaps)) brought[header, ++size[header]] = name
        perhaps[header, name] = 1
        if (certain) surely[header, name] = 1
        if (name in own) follow(header, name, certain)
    }
}

# Whether header b surely includes header a and everything that a may include.
function within(a, b,    i) {
    if (!((b, a) in surely)) return 0
    for (i = 1; i <= size[a]; i++)
        if (!((b, brought[a, i]) in surely)) return 0
    return 1
}

END {
    for (i = 1; i <= count; i++) follow(headers[i], headers[i], 1)
    # Sort by the number of included headers, smallest first.
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
