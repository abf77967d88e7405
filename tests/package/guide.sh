# Sourced by the tests of the installed package. Writes the guide's named code blocks to files of these names:
#   extract_guide <source folder> <folder>
extract_guide() {
    rm -rf "$2"
    mkdir -p "$2"
    awk -v out="$2" '
        /^```/ { file = (file == "" && NF == 2) ? out "/" $2 : ""; next }
        file != "" { print > file }' "$1/docs/host-guide.md"
    for file in CMakeLists.txt main.cpp allocation.cpp; do
        [ -s "$2/$file" ] || fail "the guide has no $file"
    done
}

# Check the output of the guide's two programs: check_main <output> <version>, check_allocation <output>
check_main() {
    case $1 in
    *"ZelCommonFrames $2"*) echo "$1" ;;
    *) fail "the guide's program said \"$1\" instead of naming version $2" ;;
    esac
}
check_allocation() {
    grep -qxF "    12: R 50000" "$source/docs/host-guide.md" || fail "the guide does not say what its program prints"
    [ "$1" = "fund 99 is not offered
12: R 50000
40: R 50000" ] || fail "the guide's allocation said \"$1\""
}
