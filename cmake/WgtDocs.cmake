# The API reference (docs/reference/Doxyfile.in): HTML and a Qt help file for Qt Creator, built by
# the target "docs" when WGT_BUILD_DOCS is on (Debian: doxygen, and qhelpgenerator from
# qhelpgenerator-qt5 or qt6-documentation-tools). Any warning fails the build, so a public name
# without documentation fails it too. Installed to <prefix>/share/doc/<package>.
option(WGT_BUILD_DOCS "Build the API reference (HTML and .qch) with the target docs" OFF)
if(NOT WGT_BUILD_DOCS)
    return()
endif()
find_package(Doxygen REQUIRED)
find_program(WGT_QHELPGENERATOR NAMES qhelpgenerator
    PATHS /usr/lib/qt${WGT_QT_MAJOR}/bin /usr/lib/qt${WGT_QT_MAJOR}/libexec /usr/lib/qt6/libexec /usr/lib/qt5/bin
    REQUIRED)
set(WGT_DOCS_OUTPUT ${CMAKE_BINARY_DIR}/docs)
set(WGT_DOCS_WARN_AS_ERROR FAIL_ON_WARNINGS)
set(wgt_docs_files ${WGT_PUBLIC_HEADERS})
file(GLOB wgt_docs_pages ${CMAKE_SOURCE_DIR}/docs/*.md)
list(APPEND wgt_docs_files ${wgt_docs_pages} README.md)
set(WGT_DOCS_INPUT "")
set(wgt_include_dirs "")
foreach(file ${wgt_docs_files})
    get_filename_component(path ${file} ABSOLUTE BASE_DIR ${CMAKE_SOURCE_DIR})
    string(APPEND WGT_DOCS_INPUT " \"${path}\"")
    get_filename_component(dir ${path} DIRECTORY)
    list(APPEND wgt_include_dirs "\"${dir}\"")
endforeach()
list(REMOVE_DUPLICATES wgt_include_dirs)
string(REPLACE ";" " " WGT_DOCS_INCLUDE_STRIP "${wgt_include_dirs}")
configure_file(${CMAKE_SOURCE_DIR}/docs/reference/Doxyfile.in ${WGT_DOCS_OUTPUT}/Doxyfile @ONLY)
add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E make_directory ${WGT_DOCS_OUTPUT}
    COMMAND Doxygen::doxygen ${WGT_DOCS_OUTPUT}/Doxyfile
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    COMMENT "API reference: ${WGT_DOCS_OUTPUT}/html and ${WGT_PACKAGE_NAME}.qch"
    VERBATIM)
install(DIRECTORY ${WGT_DOCS_OUTPUT}/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${WGT_PACKAGE_NAME}
    COMPONENT dev OPTIONAL)
install(FILES ${WGT_DOCS_OUTPUT}/${WGT_PACKAGE_NAME}.qch DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${WGT_PACKAGE_NAME}
    COMPONENT dev OPTIONAL)
