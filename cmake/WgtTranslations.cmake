# Translations of the library's own texts, and of the demo's. Each translations/<name>.ts is compiled
# with lrelease into <name>.qm at build time; the .qm files are embedded in the target as resources
# under RESOURCE_PREFIX, by default ":/WgtTreeWidget/i18n" (where CLS_WgtTranslator loads them), and
# installed to INSTALL_DESTINATION when one is given.
#
#   wgt_add_translations(<target> TS_FILES <files...> [RESOURCE_PREFIX <prefix>]
#                        [INSTALL_DESTINATION <dir>])
#
# Linguist's tools are found through the Qt package of the major version in use (WGT_QT_MAJOR,
# taken from QT_VERSION_MAJOR when the project sets it, else 5), with a plain program search as
# fallback: Debian's Linguist tools package ships lrelease without the CMake package.

if(DEFINED QT_VERSION_MAJOR)
    set(WGT_QT_MAJOR ${QT_VERSION_MAJOR})
elseif(NOT DEFINED WGT_QT_MAJOR)
    set(WGT_QT_MAJOR 5)
endif()
set(wgt_qt Qt${WGT_QT_MAJOR})

find_package(${wgt_qt} QUIET COMPONENTS LinguistTools)
if(TARGET ${wgt_qt}::lrelease)
    set(WGT_LRELEASE ${wgt_qt}::lrelease)
else()
    # Qt's own program folder first, so that a wrapper on the PATH can't pick another Qt.
    set(wgt_qt_bin_hint "")
    if(TARGET ${wgt_qt}::qmake)
        get_target_property(wgt_qmake ${wgt_qt}::qmake IMPORTED_LOCATION)
        get_filename_component(wgt_qt_bin_hint "${wgt_qmake}" DIRECTORY)
    endif()
    find_program(WGT_LRELEASE_EXECUTABLE NAMES lrelease lrelease-qt${WGT_QT_MAJOR}
        HINTS ${wgt_qt_bin_hint} NO_DEFAULT_PATH)
    find_program(WGT_LRELEASE_EXECUTABLE NAMES lrelease-qt${WGT_QT_MAJOR} lrelease)
    if(NOT WGT_LRELEASE_EXECUTABLE)
        message(FATAL_ERROR "lrelease not found: install Qt's Linguist tools "
                            "(Debian: qttools5-dev-tools) or set WGT_LRELEASE_EXECUTABLE")
    endif()
    set(WGT_LRELEASE ${WGT_LRELEASE_EXECUTABLE})
endif()

if(NOT TARGET ${wgt_qt}::rcc)
    message(FATAL_ERROR "${wgt_qt}::rcc not found: the translations can't be embedded")
endif()

function(wgt_add_translations target)
    cmake_parse_arguments(ARG "" "INSTALL_DESTINATION;RESOURCE_PREFIX" "TS_FILES" ${ARGN})
    if(NOT ARG_RESOURCE_PREFIX)
        set(ARG_RESOURCE_PREFIX /WgtTreeWidget/i18n)
    endif()
    # The resource's name goes into the names of its init functions: letters, digits and '_' only.
    string(MAKE_C_IDENTIFIER "${target}_i18n" resource_name)
    set(qm_dir ${CMAKE_CURRENT_BINARY_DIR}/translations)
    file(MAKE_DIRECTORY ${qm_dir})

    set(qm_files "")
    set(qrc_entries "")
    foreach(ts ${ARG_TS_FILES})
        get_filename_component(ts_path ${ts} ABSOLUTE)
        get_filename_component(name ${ts} NAME_WE)
        set(qm ${qm_dir}/${name}.qm)
        add_custom_command(OUTPUT ${qm}
            COMMAND ${WGT_LRELEASE} -silent ${ts_path} -qm ${qm}
            DEPENDS ${ts_path}
            COMMENT "lrelease ${name}.ts"
            VERBATIM)
        list(APPEND qm_files ${qm})
        string(APPEND qrc_entries "        <file alias=\"${name}.qm\">${qm}</file>\n")
    endforeach()

    # Written through configure_file so that an unchanged list keeps its time stamp and the
    # resource isn't compiled again at every configure.
    set(qrc ${qm_dir}/${target}_i18n.qrc)
    file(WRITE ${qrc}.in
        "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n    <qresource prefix=\"${ARG_RESOURCE_PREFIX}\">\n"
        "${qrc_entries}    </qresource>\n</RCC>\n")
    configure_file(${qrc}.in ${qrc} COPYONLY)

    set(qrc_cpp ${qm_dir}/qrc_${target}_i18n.cpp)
    add_custom_command(OUTPUT ${qrc_cpp}
        COMMAND ${wgt_qt}::rcc --name ${resource_name} --output ${qrc_cpp} ${qrc}
        DEPENDS ${qrc} ${qm_files}
        COMMENT "rcc ${target}_i18n.qrc"
        VERBATIM)
    # The generated source has no Q_OBJECT, and none of the precompiled Qt headers.
    set_source_files_properties(${qrc_cpp} PROPERTIES SKIP_AUTOMOC ON SKIP_AUTOUIC ON SKIP_AUTORCC ON
        SKIP_PRECOMPILE_HEADERS ON)
    target_sources(${target} PRIVATE ${qrc_cpp})

    if(ARG_INSTALL_DESTINATION)
        install(FILES ${qm_files} DESTINATION ${ARG_INSTALL_DESTINATION})
    endif()
endfunction()
