# Writes the table of compiled translations: cmake -DOUT=file -DFILES="a.qm;b.qm" -P EmbedTranslations.cmake
# The translations are constant bytes in the program, so it needs no files beside it wherever it is installed.
set(arrays "")
set(rows "")
foreach(file IN LISTS FILES)
    get_filename_component(name "${file}" NAME_WE)
    file(READ "${file}" bytes HEX)
    string(REGEX REPLACE "(................................)" "\\1\n    " bytes "${bytes}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
    string(APPEND arrays "constexpr unsigned char ${name}[] = {\n    ${bytes}};\n")
    string(APPEND rows "    {\"${name}\", ${name}, sizeof ${name}},\n")
endforeach()
list(LENGTH FILES count)
file(WRITE "${OUT}" "#include \"desk/TranslationTable.h\"

namespace QuoteDesk {
namespace {
${arrays}} // namespace
constinit const Translation translationTable[] = {
${rows}};
constinit const std::size_t translationCount = ${count};
} // namespace QuoteDesk
")
