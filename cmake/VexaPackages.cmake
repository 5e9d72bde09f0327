# SPDX-License-Identifier: MIT
# Debian packages by CPack, one for each component; tools/make-packages makes them. Those of both
# Qts can be installed side by side.
set(VEXA_MAINTAINER "The Vexa authors <vexa@example.org>" CACHE STRING
    "Name and address that the packages carry")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexa)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "${VEXA_MAINTAINER}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(CPACK_PACKAGE_FILE_NAME "vexa-qt${QT_VERSION_MAJOR}-${version}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
# By DESTDIR, which folders that were given as absolute paths follow, too.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)

# vexa_package(COMPONENT NAME SECTION DEPENDS packages SUMMARY words ABOUT text)
macro(vexa_package component name section)
    cmake_parse_arguments(arg "" "DEPENDS;SUMMARY;ABOUT" "" ${ARGN})
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${arg_DEPENDS}")
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${arg_SUMMARY}
Vexa keeps the offline map data of a map application on the device. It
reads the catalogue of map regions, and downloads, unpacks, installs,
updates and removes them. Nothing is lost when a program is killed or a
battery is empty, whenever that is.

${arg_ABOUT}")
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    list(APPEND packages "${component}=${name}")
endmacro()

set(CPACK_COMPONENTS_ALL "")
set(packages "")
set(qt ${QT_VERSION_MAJOR})
set(library libvexa-qt${qt}-${PROJECT_VERSION_MAJOR})
set(font "fonts-noto-core | fonts-dejavu-core")
if(qt EQUAL 5)
    set(suffix -qt5)
    set(module qml-module-vexa)
    set(qt_headers "qtbase5-dev, qtdeclarative5-dev")
    set(app_modules "qml-module-qtqml, qml-module-qtqml-models2, qml-module-qtquick2, \
qml-module-qtquick-controls2, qml-module-qtquick-layouts, qml-module-qtquick-templates2, \
qml-module-qtquick-window2")
else()
    set(suffix "")
    set(module qml6-module-vexa)
    set(qt_headers "qt6-base-dev, qt6-declarative-dev")
    set(app_modules "qml6-module-qtqml, qml6-module-qtqml-models, qml6-module-qtqml-workerscript, \
qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-layouts, \
qml6-module-qtquick-templates, qml6-module-qtquick-window")
endif()

vexa_package(library ${library} libs
    SUMMARY "offline map data for Qt ${qt} applications"
    ABOUT "This package has the shared library.")
vexa_package(development libvexa-qt${qt}-dev libdevel
    DEPENDS "${library} (= ${version}), ${qt_headers}"
    SUMMARY "offline map data for Qt ${qt} applications - development files"
    ABOUT "This package has the headers, the CMake package VexaQt${qt} and the
pkg-config file vexa-qt${qt}.")
vexa_package(qml ${module} libs
    DEPENDS "${library} (= ${version})"
    SUMMARY "offline map data for Qt ${qt} applications - QML module"
    ABOUT "This package has the module that QML pages import as Vexa 1.0.")
if(TARGET vexa-maps)
    vexa_package(programs vexa-maps${suffix} utils
        SUMMARY "command-line manager of offline map data"
        ABOUT "This package has the command-line program vexa-maps${suffix}.")
endif()
if(TARGET vexa-maps-ui)
    vexa_package(app vexa-maps-ui${suffix} utils
        DEPENDS "${font}, ${app_modules}"
        SUMMARY "manager of offline map data for phones and desktops"
        ABOUT "This package has the application vexa-maps-ui${suffix}.")
endif()

# What CPack could generate itself would come with scripts that call ldconfig; Debian has a trigger
# for that.
set(folder "${PROJECT_BINARY_DIR}/deb")
file(CONFIGURE OUTPUT "${folder}/shlibs"
    CONTENT "libvexa-qt${qt} ${PROJECT_VERSION_MAJOR} ${library} (>= ${PROJECT_VERSION})\n")
file(CONFIGURE OUTPUT "${folder}/triggers" CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${folder}/shlibs" "${folder}/triggers")

configure_file(cmake/deb/finish.cmake.in "${folder}/finish.cmake" @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS "${folder}/finish.cmake")
include(CPack)
