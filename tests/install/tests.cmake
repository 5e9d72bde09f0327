# SPDX-License-Identifier: MIT
# Installs this build into a folder of its own and uses it from there, as a host would. A build
# with checkers in it is never installed.
if(VEXA_SANITIZE OR VEXA_COVERAGE)
    return()
endif()

function(vexa_add_install_test step)
    add_test(NAME install/${step} COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/install/check-install"
        ${step} "${PROJECT_BINARY_DIR}" "${CMAKE_CURRENT_BINARY_DIR}/install-check"
        ${QT_VERSION_MAJOR} "${CMAKE_INSTALL_LIBDIR}" "${VEXA_INSTALL_QMLDIR}"
        "$<TARGET_FILE:qmlloader>")
    set_tests_properties(install/${step} PROPERTIES TIMEOUT 300
        ENVIRONMENT "CXX=${CMAKE_CXX_COMPILER}")
    if(step STREQUAL "install")
        set_tests_properties(install/${step} PROPERTIES FIXTURES_SETUP installed)
    else()
        set_tests_properties(install/${step} PROPERTIES FIXTURES_REQUIRED installed)
    endif()
endfunction()

foreach(step IN ITEMS install names find_package pkg-config qml)
    vexa_add_install_test(${step})
endforeach()
if(TARGET vexa-maps-ui)
    vexa_add_install_test(qml-page) # Qt Quick is there
    vexa_add_install_test(ui)
endif()

# The same build as Debian packages: nothing is compiled but an example.
if(TARGET vexa-maps)
    add_test(NAME install/packages COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/install/check-packages"
        "${PROJECT_BINARY_DIR}" "${CMAKE_CURRENT_BINARY_DIR}/packages-check" ${QT_VERSION_MAJOR}
        "${CMAKE_INSTALL_LIBDIR}" "${VEXA_INSTALL_QMLDIR}" "$<TARGET_FILE:qmlloader>")
    set_tests_properties(install/packages PROPERTIES TIMEOUT 300
        ENVIRONMENT "CXX=${CMAKE_CXX_COMPILER}")
endif()

# The reference is made from what was installed; an undocumented public member fails here.
add_test(NAME install/reference
    COMMAND "${VEXA_SYSTEM_PYTHON}" -B -m unittest test_reference
    WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/install")
set_tests_properties(install/reference PROPERTIES
    TIMEOUT 180
    FIXTURES_REQUIRED installed
    ENVIRONMENT "LC_ALL=C.UTF-8;VEXA_HEADERS=${CMAKE_CURRENT_BINARY_DIR}/install-check/prefix/${CMAKE_INSTALL_INCLUDEDIR}/vexa-qt${QT_VERSION_MAJOR}/vexa")

# The names that installed programs look for in the library.
add_test(NAME install/symbols
    COMMAND "${VEXA_SYSTEM_PYTHON}" -B -m unittest test_symbols
    WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/install")
set_tests_properties(install/symbols PROPERTIES
    ENVIRONMENT "LC_ALL=C.UTF-8;VEXA_LIBRARY=$<TARGET_LINKER_FILE:vexa>")
