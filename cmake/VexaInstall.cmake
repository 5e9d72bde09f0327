# SPDX-License-Identifier: MIT
# Library, headers, CMake package, pkg-config file and QML module. Everything carries the Qt major
# in its name, so that both builds can be installed side by side.
include(CMakePackageConfigHelpers)

set(package VexaQt${QT_VERSION_MAJOR})
set(VEXA_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/${package}" CACHE STRING
    "Folder of the CMake package below the prefix")
if(QT_VERSION_MAJOR EQUAL 5)
    set(default_qml_dir "${CMAKE_INSTALL_LIBDIR}/qt5/qml")
else()
    set(default_qml_dir "${CMAKE_INSTALL_LIBDIR}/qt6/qml")
endif()
set(VEXA_INSTALL_QMLDIR "${default_qml_dir}" CACHE STRING "Qt's QML folder below the prefix")

install(TARGETS vexa EXPORT ${package}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vexa-qt${QT_VERSION_MAJOR}/vexa")
install(DIRECTORY "${PROJECT_BINARY_DIR}/include/vexa"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vexa-qt${QT_VERSION_MAJOR}"
    FILES_MATCHING PATTERN "*.h")
install(EXPORT ${package}Targets NAMESPACE Vexa:: DESTINATION "${VEXA_INSTALL_CMAKEDIR}")

set(PACKAGE ${package})
configure_package_config_file(cmake/VexaConfig.cmake.in
    "${PROJECT_BINARY_DIR}/${package}Config.cmake" INSTALL_DESTINATION "${VEXA_INSTALL_CMAKEDIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/${package}ConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/${package}Config.cmake"
    "${PROJECT_BINARY_DIR}/${package}ConfigVersion.cmake"
    DESTINATION "${VEXA_INSTALL_CMAKEDIR}")

configure_file(cmake/vexa.pc.in "${PROJECT_BINARY_DIR}/vexa-qt${QT_VERSION_MAJOR}.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vexa-qt${QT_VERSION_MAJOR}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# A link and not a copy, so that a host that links the library and loads the module has one of it.
install(FILES plugin/qmldir DESTINATION "${VEXA_INSTALL_QMLDIR}/Vexa")
file(RELATIVE_PATH library_from_module "/prefix/${VEXA_INSTALL_QMLDIR}/Vexa"
    "/prefix/${CMAKE_INSTALL_LIBDIR}/libvexa-qt${QT_VERSION_MAJOR}.so.${PROJECT_VERSION_MAJOR}")
install(CODE "
    file(CREATE_LINK \"${library_from_module}\"
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${VEXA_INSTALL_QMLDIR}/Vexa/libvexa.so\" SYMBOLIC)
    message(STATUS \"Installing: \${CMAKE_INSTALL_PREFIX}/${VEXA_INSTALL_QMLDIR}/Vexa/libvexa.so\")")
