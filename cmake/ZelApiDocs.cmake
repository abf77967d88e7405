# Generates the reference pages of the public headers: cmake --build <folder> --target apidocs
# The target is not part of the ordinary build. The test package.apidocs runs it and fails on a warning.

list(TRANSFORM zel_folders PREPEND "\"${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE zel_doxygen_input)
list(TRANSFORM zel_doxygen_input APPEND "\"")
list(APPEND zel_doxygen_input "\"${PROJECT_SOURCE_DIR}/docs\"")
list(JOIN zel_doxygen_input " " zel_doxygen_input)
configure_file("${PROJECT_SOURCE_DIR}/docs/Doxyfile.in" "${PROJECT_BINARY_DIR}/Doxyfile" @ONLY)
add_custom_target(apidocs COMMAND doxygen "${PROJECT_BINARY_DIR}/Doxyfile" VERBATIM)
