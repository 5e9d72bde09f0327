# SPDX-License-Identifier: MIT
# Library, headers, CMake package, pkg-config file and QML module. Everything carries the Qt major
# in its name, so that both builds can be installed side by side.
include(CMakePackageConfigHelpers)

set(package VexaQt${QT_VERSION_MAJOR})
set(VEXA_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/${package}" CACHE STRING
    "Folder of the CMake package below the prefix")

# Where this Qt has its QML modules, below its own prefix. With another prefix than Qt's the user
# names it in QML2_IMPORT_PATH, or sets VEXA_INSTALL_QMLDIR to Qt's own folder.
get_target_property(qmake ${VEXA_QT}::qmake IMPORTED_LOCATION)
foreach(folder IN ITEMS PREFIX QML)
    execute_process(COMMAND "${qmake}" -query QT_INSTALL_${folder}
        OUTPUT_VARIABLE qt_${folder} OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(RELATIVE_PATH default_qml_dir "${qt_PREFIX}" "${qt_QML}")
set(VEXA_INSTALL_QMLDIR "${default_qml_dir}" CACHE STRING
    "Folder of QML modules, below the prefix or absolute")

install(TARGETS vexa EXPORT ${package}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT library NAMELINK_COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vexa-qt${QT_VERSION_MAJOR}/vexa")
install(DIRECTORY "${PROJECT_BINARY_DIR}/include/vexa"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vexa-qt${QT_VERSION_MAJOR}" COMPONENT development
    FILES_MATCHING PATTERN "*.h")
install(EXPORT ${package}Targets NAMESPACE Vexa:: DESTINATION "${VEXA_INSTALL_CMAKEDIR}"
    COMPONENT development)

set(PACKAGE ${package})
configure_package_config_file(cmake/VexaConfig.cmake.in
    "${PROJECT_BINARY_DIR}/${package}Config.cmake" INSTALL_DESTINATION "${VEXA_INSTALL_CMAKEDIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/${package}ConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/${package}Config.cmake"
    "${PROJECT_BINARY_DIR}/${package}ConfigVersion.cmake"
    DESTINATION "${VEXA_INSTALL_CMAKEDIR}" COMPONENT development)

file(RELATIVE_PATH prefix_from_pc "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
configure_file(cmake/vexa.pc.in "${PROJECT_BINARY_DIR}/vexa-qt${QT_VERSION_MAJOR}.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vexa-qt${QT_VERSION_MAJOR}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

# A link and not a copy, so that a host that links the library and loads the module has one of it.
install(FILES plugin/qmldir DESTINATION "${VEXA_INSTALL_QMLDIR}/Vexa" COMPONENT qml)
install(CODE "
    set(module \"${VEXA_INSTALL_QMLDIR}/Vexa\")
    if(NOT IS_ABSOLUTE \"\${module}\")
        set(module \"\${CMAKE_INSTALL_PREFIX}/\${module}\")
    endif()
    file(RELATIVE_PATH target \"\${module}\"
        \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/$<TARGET_SONAME_FILE_NAME:vexa>\")
    message(STATUS \"Installing: \$ENV{DESTDIR}\${module}/libvexa.so\")
    file(CREATE_LINK \"\${target}\" \"\$ENV{DESTDIR}\${module}/libvexa.so\" SYMBOLIC)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${module}/libvexa.so\")"
    COMPONENT qml)
