# Writes a source file with one function for each class that the public headers declare, so that the compiler describes
# the classes in its debug information: awk -f abi-classes.awk <headers>
function quoted(name) {
    gsub(/::/, "_", name)
    return "classOf_" name
}
BEGIN { print "#define DESCRIBED extern \"C\" __attribute__((visibility(\"default\"))) void" }
FNR == 1 { print "#include \"" FILENAME "\""; space = ""; template = 0 }
/^namespace [A-Za-z:]+$/ { space = $2 "::"; next }
/^}/ && !/;/ { space = ""; next }
/^template/ { template = 1; next }
/^(class|struct) / && !template && !/;$/ {
    name = $0
    sub(/^(class|struct) /, "", name)
    sub(/^[A-Z_]+_EXPORT /, "", name)
    sub(/[ :{].*/, "", name)
    classes[space name] = 1
}
{ template = 0 }
END {
    for (name in classes)
        print "DESCRIBED " quoted(name) "(const " name " *) {}"
}
