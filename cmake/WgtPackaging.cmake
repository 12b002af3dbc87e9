# pkg-config file and Debian packages (cpack -G DEB in the build folder), one set per Qt major:
#
#   component  Qt 5 package            Qt 6 package               holds
#   runtime    libwgttreewidget1       libwgttreewidget-qt6-1     the library and its translations
#   dev        libwgttreewidget-dev    libwgttreewidget-qt6-dev   headers, CMake package, pkg-config
#                                                                 file, .so link, Designer plugin
#   demo       wgttree-demo            wgttree-demo-qt6           the demo, the reference sibling
#                                                                 libraries, skins and samples
#
# The two sets share no file, so all six install together. A build meant for packages is
# configured with -DCMAKE_INSTALL_PREFIX=/usr, which gives Debian's multiarch library folder and
# puts the Designer plugin into Qt's own folder (scripts/build_packages.sh does that).

# The pkg-config file finds its prefix from its own place, so the tree it describes may move.
set(wgt_pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH WGT_PC_TO_PREFIX /${wgt_pc_dir} /)
string(REGEX REPLACE "/$" "" WGT_PC_TO_PREFIX "${WGT_PC_TO_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/WgtTreeWidget.pc.in ${CMAKE_BINARY_DIR}/${WGT_PACKAGE_NAME}.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/${WGT_PACKAGE_NAME}.pc DESTINATION ${wgt_pc_dir} COMPONENT dev)

set(wgt_version ${PROJECT_VERSION})
if(WGT_QT_MAJOR STREQUAL "5")
    set(wgt_deb_lib libwgttreewidget${PROJECT_VERSION_MAJOR})
    set(wgt_deb_dev libwgttreewidget-dev)
    set(wgt_deb_demo wgttree-demo)
    set(wgt_deb_qt_runtime "libqt5widgets5 (>= 5.15)")
    set(wgt_deb_qt_dev "qtbase5-dev (>= 5.15)")
else()
    set(wgt_deb_lib libwgttreewidget-qt6-${PROJECT_VERSION_MAJOR})
    set(wgt_deb_dev libwgttreewidget-qt6-dev)
    set(wgt_deb_demo wgttree-demo-qt6)
    set(wgt_deb_qt_runtime "libqt6widgets6 (>= 6.2)")
    set(wgt_deb_qt_dev "qt6-base-dev (>= 6.2)")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${WGT_PACKAGE_NAME})
set(CPACK_PACKAGE_VERSION ${wgt_version})
set(CPACK_PACKAGE_VENDOR "WgtTreeWidget")
set(CPACK_PACKAGE_CONTACT "WgtTreeWidget developers <wgttreewidget@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Qt tree widgets for video-surveillance clients")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR}/packages)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev demo)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT) # <package>_<version>_<arch>.deb
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://localhost/wgttreewidget")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${wgt_deb_lib})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "${wgt_deb_qt_runtime}")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "Qt ${WGT_QT_MAJOR} tree widgets for video-surveillance clients\n The library ${WGT_PACKAGE_NAME}: resource, custom, favourite and passenger-flow trees\n of hosts and channels that keep channel states current, with its translations.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME ${wgt_deb_dev})
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${wgt_deb_lib} (= ${wgt_version}), ${wgt_deb_qt_dev}")
set(CPACK_DEBIAN_DEV_DESCRIPTION
    "Qt ${WGT_QT_MAJOR} tree widgets for video-surveillance clients (development files)\n Headers, the CMake package ${WGT_PACKAGE_NAME}, the pkg-config file ${WGT_PACKAGE_NAME}.pc\n and the Qt Designer plugin of the tree widgets.")

set(CPACK_DEBIAN_DEMO_PACKAGE_NAME ${wgt_deb_demo})
set(CPACK_DEBIAN_DEMO_PACKAGE_SECTION video)
set(CPACK_DEBIAN_DEMO_PACKAGE_DEPENDS "${wgt_deb_lib} (= ${wgt_version})")
set(CPACK_DEBIAN_DEMO_DESCRIPTION
    "Demo of the Qt ${WGT_QT_MAJOR} tree widgets for video-surveillance clients\n The demo program with the reference sibling libraries (an in-memory device layer\n and its companions), the skins and sample installations.")

include(CPack)
