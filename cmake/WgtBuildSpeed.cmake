# Build speed: a compiler cache, precompiled Qt headers, a fast linker and test code compiled with
# less optimisation. The first three change only how fast the same objects come: with
# WGT_USE_CCACHE=OFF, WGT_PRECOMPILE_HEADERS=OFF and WGT_FAST_LINKER=OFF the objects are the same.
# The fourth changes the test programs' own objects, never the library, the siblings, the demo or
# the benchmarks.
#
#   WGT_USE_CCACHE            compile through ccache when it is installed (default ON)
#   WGT_PRECOMPILE_HEADERS    precompiled headers of the Qt headers the code uses (default ON)
#   WGT_FAST_LINKER           link with lld, else gold, when the compiler can use it (default ON)
#   WGT_TEST_CODE_O1          test programs' own code at -O1 in Release and RelWithDebInfo builds
#                             (default ON)
#
#   wgt_precompile_library(<target>)   the widget library's own header set
#   wgt_precompile_qt_library(<target>) a shared library using Qt Widgets: reuses the set of an
#                                      object library with the flags of such a library
#   wgt_precompile_program(<target>)   a Qt program linking the widget library: reuses the set of
#                                      the test-support library (same flags as every program)

# ---- compiler cache -----------------------------------------------------------------------------
# The cache lives in ccache's default place (~/.cache/ccache), so that every build folder of this
# machine, and a fresh clone of the repository elsewhere, hit what was compiled before:
#   CCACHE_BASEDIR  paths below the source tree are hashed relative to the build folder, so that the
#                   same sources in another clone give the same keys;
#   CCACHE_NOHASHDIR the build folder is not part of the key of -g builds (debug information then
#                   names the folder of the first build; sanitizer reports still name functions);
#   CCACHE_SLOPPINESS precompiled headers are cacheable, and files of a new clone, all of them just
#                   written, are hashed by content rather than refused for their new times.
# A launcher already set by the caller (-DCMAKE_CXX_COMPILER_LAUNCHER=...) wins.
option(WGT_USE_CCACHE "Compile through ccache when it is installed" ON)
if(WGT_USE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(WGT_CCACHE_PROGRAM ccache)
    if(WGT_CCACHE_PROGRAM)
        set(wgt_ccache_launcher
            ${CMAKE_COMMAND} -E env
            CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
            CCACHE_NOHASHDIR=1
            CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
            ${WGT_CCACHE_PROGRAM})
        set(CMAKE_CXX_COMPILER_LAUNCHER ${wgt_ccache_launcher})
        set(CMAKE_C_COMPILER_LAUNCHER ${wgt_ccache_launcher})
        message(STATUS "Compiler cache: ${WGT_CCACHE_PROGRAM}")
    else()
        message(STATUS "Compiler cache: ccache not found, compiling without it")
    endif()
endif()

# ---- linker ---------------------------------------------------------------------------------------
# A build links well over a hundred programs against the Qt libraries; the default linker (ld.bfd)
# takes about 0.7 s for each test program here, lld and gold about 0.2 s. Only the link line
# changes, so the compiler cache keeps its keys. A linker already named by the caller
# (-fuse-ld=... in CMAKE_EXE_LINKER_FLAGS or CMAKE_SHARED_LINKER_FLAGS) wins.
option(WGT_FAST_LINKER "Link with lld, else gold, when the compiler can use it" ON)
if(WGT_FAST_LINKER AND NOT "${CMAKE_EXE_LINKER_FLAGS} ${CMAKE_SHARED_LINKER_FLAGS}" MATCHES "-fuse-ld=")
    include(CheckCXXSourceCompiles)
    foreach(wgt_linker lld gold)
        set(CMAKE_REQUIRED_LINK_OPTIONS -fuse-ld=${wgt_linker})
        set(CMAKE_REQUIRED_QUIET ON)
        check_cxx_source_compiles("int main() { return 0; }" WGT_LINKER_${wgt_linker}_WORKS)
        unset(CMAKE_REQUIRED_LINK_OPTIONS)
        unset(CMAKE_REQUIRED_QUIET)
        if(WGT_LINKER_${wgt_linker}_WORKS)
            add_link_options(-fuse-ld=${wgt_linker})
            message(STATUS "Linker: ${wgt_linker}")
            break()
        endif()
    endforeach()
endif()

# ---- test code ----------------------------------------------------------------------------------
# A test program drives the library as the build type built it (-O3 in Release); its own code is
# Qt Test macros, signal spies and record makers, which gain nothing from -O3 and are most of what a
# build compiles. At -O1 they compile in about two thirds of the time (5.6 s against 3.5 s for the
# largest test here). The test-support library and every test program share the flag, as they share
# one precompiled header set. Debug builds (the sanitizer jobs) keep -O0.
option(WGT_TEST_CODE_O1 "Compile the test programs' own code at -O1 in optimised builds" ON)

function(wgt_test_code_options target)
    if(WGT_TEST_CODE_O1)
        target_compile_options(${target} PRIVATE
            $<$<OR:$<CONFIG:Release>,$<CONFIG:RelWithDebInfo>>:-O1>)
    endif()
endfunction()

# ---- precompiled headers ------------------------------------------------------------------------
option(WGT_PRECOMPILE_HEADERS "Precompile the Qt headers the code uses" ON)

# QAction moved from Qt Widgets to Qt Gui in Qt 6.
if(WGT_QT_MAJOR STREQUAL "5")
    set(wgt_pch_qaction <QtWidgets/QAction>)
else()
    set(wgt_pch_qaction <QtGui/QAction>)
endif()

# The widget library and the Qt libraries beside it (reference and test siblings). Qt headers only:
# the project's own headers change too often to be worth a rebuild of every set.
set(WGT_PCH_LIBRARY_HEADERS
    <QtCore/QObject>
    <QtCore/QString>
    <QtCore/QStringList>
    <QtCore/QVariant>
    <QtCore/QMap>
    <QtCore/QVector>
    <QtCore/QList>
    <QtCore/QSet>
    <QtCore/QHash>
    <QtCore/QPair>
    <QtCore/QPointer>
    <QtCore/QDir>
    <QtCore/QFile>
    <QtCore/QFileInfo>
    <QtCore/QTimer>
    <QtCore/QThread>
    <QtCore/QMutex>
    <QtCore/QReadWriteLock>
    <QtCore/QJsonDocument>
    <QtCore/QJsonObject>
    <QtCore/QJsonArray>
    <QtGui/QIcon>
    <QtGui/QPixmap>
    <QtGui/QImage>
    <QtGui/QPainter>
    <QtGui/QColor>
    <QtGui/QFont>
    <QtGui/QFontMetrics>
    <QtGui/QMouseEvent>
    <QtWidgets/QApplication>
    <QtWidgets/QWidget>
    <QtWidgets/QTreeWidget>
    <QtWidgets/QTreeWidgetItem>
    <QtWidgets/QHeaderView>
    <QtWidgets/QLineEdit>
    <QtWidgets/QListWidget>
    <QtWidgets/QStackedWidget>
    <QtWidgets/QToolBar>
    <QtWidgets/QToolButton>
    <QtWidgets/QBoxLayout>
    <QtWidgets/QMenu>
    ${wgt_pch_qaction}
    <QtWidgets/QStyledItemDelegate>
    <memory>
    <string>
    <vector>
    <functional>)

# Programs: the same, and Qt Test (the umbrella header most tests include).
set(WGT_PCH_PROGRAM_HEADERS ${WGT_PCH_LIBRARY_HEADERS} <QtTest/QtTest> <QtTest/QSignalSpy>)

function(wgt_precompile_library target)
    if(WGT_PRECOMPILE_HEADERS)
        target_precompile_headers(${target} PRIVATE ${WGT_PCH_LIBRARY_HEADERS})
    endif()
endfunction()

# A shared library using Qt Widgets reuses the set of an object library compiled with the flags of
# such a library (position independent code, the Qt modules of the widget library). The widget
# library's own set can't serve: it is made with WgtTreeWidget_EXPORTS defined, which the compiler
# then asks of every user. Libraries of plain C++ or QtCore alone keep to their own headers (the
# set names Qt Widgets headers).
function(wgt_precompile_qt_library target)
    if(NOT WGT_PRECOMPILE_HEADERS OR NOT TARGET WgtTreeWidget)
        return()
    endif()
    get_target_property(libs ${target} LINK_LIBRARIES)
    if(NOT "WgtTreeWidget" IN_LIST libs AND NOT "${WGT_QT}::Widgets" IN_LIST libs)
        return()
    endif()
    if(NOT TARGET wgt_pch_qt_library)
        set(holder_source ${CMAKE_BINARY_DIR}/wgt_pch_qt_library.cpp)
        if(NOT EXISTS ${holder_source})
            file(WRITE ${holder_source} "// Carries the precompiled headers of the Qt libraries beside the widget library.\n")
        endif()
        add_library(wgt_pch_qt_library OBJECT ${holder_source})
        target_link_libraries(wgt_pch_qt_library PRIVATE WgtTreeWidget)
        set_target_properties(wgt_pch_qt_library PROPERTIES POSITION_INDEPENDENT_CODE ON AUTOMOC OFF)
        target_precompile_headers(wgt_pch_qt_library PRIVATE ${WGT_PCH_LIBRARY_HEADERS})
    endif()
    target_precompile_headers(${target} REUSE_FROM wgt_pch_qt_library)
endfunction()

# A program linking the widget library and Qt Test: reuses the set of the test-support library,
# which is compiled with the flags of a program (see tests/CMakeLists.txt).
function(wgt_precompile_program target)
    if(WGT_PRECOMPILE_HEADERS AND TARGET wgt_test_support)
        target_precompile_headers(${target} REUSE_FROM wgt_test_support)
        wgt_skip_precompile_mocs(${target})
    endif()
endfunction()

# A program's meta-object code is included by its own source (<name>.moc), so the collection file of
# AUTOMOC stays empty: loading the precompiled set into it would cost more than the file itself.
# Call from the folder that defines the target.
function(wgt_skip_precompile_mocs target)
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()
