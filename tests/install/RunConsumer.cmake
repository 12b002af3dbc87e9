# Script run by CTest: install, configure the consumer, build it and run it. WGT_PACKAGE_NAME is
# the package of the build's Qt major (WgtTreeWidget or WgtTreeWidgetQt6), WGT_QT_MAJOR that major.
file(REMOVE_RECURSE ${WGT_WORK_DIR})
set(prefix ${WGT_WORK_DIR}/prefix)
set(pkg ${WGT_PACKAGE_NAME})

include(${CMAKE_CURRENT_LIST_DIR}/RunStep.cmake)

run_step("install" ${WGT_CMAKE_COMMAND} --install ${WGT_BUILD_DIR} --prefix ${prefix})

foreach(header WgtTreeWidget.h CLS_WgtBaseTreeWidget.h CLS_WgtTreeWidgetItem.h TreeStructDefine.h
        DevStructDefine.h Util.h Logger.h CLS_DevManage.h I_AppSignals.h FunctionUtil.h
        CLS_ViewBasic.h CLS_PresenterBasic.h CLS_WgtTreeWidget.h CLS_WgtItemToolBar.h CLS_WgtToolBtnStack.h)
    if(NOT EXISTS ${prefix}/include/${pkg}/${header})
        message(FATAL_ERROR "installed header missing: include/${pkg}/${header}")
    endif()
endforeach()

# The compiled translations lie beside the library, in the folder of its package.
foreach(language en de zh_CN)
    if(NOT EXISTS ${prefix}/${WGT_INSTALL_LIBDIR}/${pkg}/translations/wgttreewidget_${language}.qm)
        message(FATAL_ERROR "installed translation missing: ${WGT_INSTALL_LIBDIR}/${pkg}/translations/wgttreewidget_${language}.qm")
    endif()
endforeach()

# The umbrella header brings in every other installed header.
file(READ ${prefix}/include/${pkg}/WgtTreeWidget.h umbrella)
file(GLOB installed RELATIVE ${prefix}/include/${pkg} ${prefix}/include/${pkg}/*.h)
foreach(header ${installed})
    if(NOT header STREQUAL "WgtTreeWidget.h")
        string(FIND "${umbrella}" "#include \"${header}\"" pos)
        if(pos EQUAL -1)
            message(FATAL_ERROR "WgtTreeWidget.h does not include ${header}")
        endif()
    endif()
endforeach()

set(build_type ${WGT_BUILD_TYPE})
if(NOT build_type)
    set(build_type Release)
endif()
# The library under the package's own name, with its package files.
file(GLOB library ${prefix}/lib*/lib${pkg}.so)
file(GLOB config ${prefix}/lib*/cmake/${pkg}/${pkg}Config.cmake)
if(NOT library OR NOT config)
    message(FATAL_ERROR "lib${pkg}.so or lib/cmake/${pkg}/${pkg}Config.cmake not installed")
endif()

# The Designer plugin, when this build made one: installed into <libdir>/qt<major>/plugins/designer,
# where the plugin test loads it through QPluginLoader and QUiLoader.
if(WGT_QT_MAJOR STREQUAL "5")
    set(designer_file libWgtTreeWidgetDesigner.so)
else()
    set(designer_file libWgtTreeWidgetQt6Designer.so)
endif()
if(EXISTS ${WGT_BUILD_DIR}/plugins/designer/${designer_file})
    set(designer_dir ${prefix}/${WGT_INSTALL_LIBDIR}/qt${WGT_QT_MAJOR}/plugins/designer)
    if(NOT EXISTS ${designer_dir}/${designer_file})
        message(FATAL_ERROR "Designer plugin not installed: ${designer_dir}/${designer_file}")
    endif()
    if(EXISTS ${WGT_BUILD_DIR}/bin/tst_DesignerPlugin)
        run_step("designer plugin as installed" ${WGT_CMAKE_COMMAND} -E env WGT_DESIGNER_PLUGIN_DIR=${designer_dir}
            ${WGT_BUILD_DIR}/bin/tst_DesignerPlugin)
    endif()
endif()

run_step("configure consumer" ${WGT_CMAKE_COMMAND} -S ${WGT_CONSUMER_SOURCE} -B ${WGT_WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${build_type} -DCMAKE_CXX_COMPILER=${WGT_CXX_COMPILER}
    -DWGT_PACKAGE=${pkg})
run_step("build consumer" ${WGT_CMAKE_COMMAND} --build ${WGT_WORK_DIR}/build)
run_step("run consumer" ${WGT_WORK_DIR}/build/WgtConsumer)
# Built with the Qt of this build's major, and running on it.
if(NOT out MATCHES "on Qt ${WGT_QT_MAJOR}\\.[0-9]+\\.[0-9]+ \\(built with ${WGT_QT_MAJOR}\\.")
    message(FATAL_ERROR "consumer did not run on Qt ${WGT_QT_MAJOR}:\n${out}")
endif()
if(NOT out MATCHES "form from uic holds a CLS_WgtDeviceTree and a CLS_WgtTreeWidget")
    message(FATAL_ERROR "consumer's uic form did not hold both trees:\n${out}")
endif()
