cmake_minimum_required(VERSION 3.16)
# Script run by CTest: the packages of both Qt majors installed into one prefix, the other major's
# first, then this build's. Neither may install a file the other installed, the first one's files
# must come out of the second install unchanged, and an outside project builds and runs against
# each package from that one prefix.
#
#   WGT_BUILD_DIR, WGT_QT_MAJOR, WGT_PACKAGE_NAME   this build
#   WGT_OTHER_QT_MAJOR, WGT_OTHER_PACKAGE_NAME      the other major
#   WGT_OTHER_BUILD_DIR   a build folder of the other major to install from; empty: the library,
#                         the siblings and the demo of the other major are built here, from
#                         WGT_SOURCE_DIR (through the compiler cache of the main build)
#   WGT_CONSUMER_SOURCE, WGT_WORK_DIR, WGT_CMAKE_COMMAND, WGT_BUILD_TYPE, WGT_CXX_COMPILER
file(REMOVE_RECURSE ${WGT_WORK_DIR})
set(prefix ${WGT_WORK_DIR}/prefix)
set(build_type ${WGT_BUILD_TYPE})
if(NOT build_type)
    set(build_type Release)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/RunStep.cmake)

# ---- a build of the other major ----------------------------------------------------------------
set(other_build ${WGT_OTHER_BUILD_DIR})
if(other_build)
    file(STRINGS ${other_build}/CMakeCache.txt other_major REGEX "^WGT_QT_MAJOR:")
    if(NOT other_major MATCHES "=${WGT_OTHER_QT_MAJOR}$")
        message(FATAL_ERROR "${other_build} is not a build of Qt ${WGT_OTHER_QT_MAJOR} (${other_major})")
    endif()
else()
    set(other_build ${WGT_WORK_DIR}/other-build)
    execute_process(COMMAND ${WGT_CMAKE_COMMAND} -S ${WGT_SOURCE_DIR} -B ${other_build}
            -DCMAKE_BUILD_TYPE=${build_type} -DCMAKE_CXX_COMPILER=${WGT_CXX_COMPILER}
            -DWGT_QT_MAJOR=${WGT_OTHER_QT_MAJOR} -DBUILD_TESTING=OFF -DWGT_BUILD_BENCH=OFF
        RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT rc EQUAL 0)
        if(err MATCHES "Qt${WGT_OTHER_QT_MAJOR}")
            # Reported as skipped (SKIP_REGULAR_EXPRESSION): a machine with one Qt major has
            # nothing to install beside this build.
            message(FATAL_ERROR "SKIPPED: Qt ${WGT_OTHER_QT_MAJOR} is not installed on this machine, so "
                "there is no package of the other major to install beside this one.\n${err}")
        endif()
        message(FATAL_ERROR "configure of the Qt ${WGT_OTHER_QT_MAJOR} build failed (${rc}):\n${out}\n${err}")
    endif()
    run_step("build Qt ${WGT_OTHER_QT_MAJOR}" ${WGT_CMAKE_COMMAND} --build ${other_build} -j2)
endif()

# ---- both into one prefix ------------------------------------------------------------------------
# The manifest lists every file an install wrote.
function(install_into build_dir out_files)
    run_step("install ${build_dir}" ${WGT_CMAKE_COMMAND} --install ${build_dir} --prefix ${prefix})
    file(STRINGS ${build_dir}/install_manifest.txt files)
    if(NOT files)
        message(FATAL_ERROR "install of ${build_dir} wrote nothing")
    endif()
    set(${out_files} ${files} PARENT_SCOPE)
endfunction()

install_into(${other_build} first_files)
foreach(file ${first_files})
    file(SHA256 ${file} hash)
    list(APPEND first_hashes "${file}=${hash}")
endforeach()
install_into(${WGT_BUILD_DIR} second_files)

set(shared)
foreach(file ${first_files})
    if(file IN_LIST second_files)
        list(APPEND shared ${file})
    endif()
endforeach()
if(shared)
    string(REPLACE ";" "\n  " shared "${shared}")
    message(FATAL_ERROR "both packages install these files:\n  ${shared}")
endif()
foreach(entry ${first_hashes})
    string(REGEX REPLACE "=[0-9a-f]+$" "" file "${entry}")
    file(SHA256 ${file} hash)
    if(NOT entry STREQUAL "${file}=${hash}")
        message(FATAL_ERROR "the second install changed ${file}")
    endif()
endforeach()
list(LENGTH first_files first_count)
list(LENGTH second_files second_count)
message(STATUS "one prefix: ${first_count} file(s) of Qt ${WGT_OTHER_QT_MAJOR}, ${second_count} of Qt ${WGT_QT_MAJOR}, none shared")

# ---- an outside project against each package of the prefix -------------------------------------
foreach(pair "${WGT_OTHER_PACKAGE_NAME}:${WGT_OTHER_QT_MAJOR}" "${WGT_PACKAGE_NAME}:${WGT_QT_MAJOR}")
    string(REPLACE ":" ";" fields "${pair}")
    list(GET fields 0 pkg)
    list(GET fields 1 major)
    set(consumer_build ${WGT_WORK_DIR}/consumer-${pkg})
    run_step("configure consumer of ${pkg}" ${WGT_CMAKE_COMMAND} -S ${WGT_CONSUMER_SOURCE} -B ${consumer_build}
        -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${build_type} -DCMAKE_CXX_COMPILER=${WGT_CXX_COMPILER}
        -DWGT_PACKAGE=${pkg})
    run_step("build consumer of ${pkg}" ${WGT_CMAKE_COMMAND} --build ${consumer_build})
    run_step("run consumer of ${pkg}" ${consumer_build}/WgtConsumer)
    if(NOT out MATCHES "on Qt ${major}\\.[0-9]+\\.[0-9]+ \\(built with ${major}\\.")
        message(FATAL_ERROR "consumer of ${pkg} did not run on Qt ${major}:\n${out}")
    endif()
endforeach()
