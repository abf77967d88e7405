# Writes the table of pictures: cmake -DOUT=file -DFOLDER=folder -P EmbedGlyphs.cmake
# The pictures are constant text, because a Qt resource would register itself when the library is loaded.
file(GLOB files "${FOLDER}/*.svg")
list(TRANSFORM files REPLACE ".*/" "" OUTPUT_VARIABLE names)
list(TRANSFORM names REPLACE "[.]svg$" "")
list(SORT names)
set(text "#include \"toolkit/GlyphTable_p.h\"\n\nnamespace Zel {\nconstinit const Glyph glyphTable[] = {\n")
foreach(name IN LISTS names)
    file(READ "${FOLDER}/${name}.svg" svg)
    string(APPEND text "    {\"${name}\", R\"svg(${svg})svg\"},\n")
endforeach()
list(LENGTH names count)
string(APPEND text "};\nconstinit const std::size_t glyphCount = ${count};\n} // namespace Zel\n")
file(WRITE "${OUT}" "${text}")
