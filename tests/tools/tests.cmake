# SPDX-License-Identifier: MIT
# Debian's own interpreter: python3-netcdf4 is a module of that one only.
find_program(VEXA_SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# vexa_add_python_test(tools/tiles) runs tools/test_tiles.py.
function(vexa_add_python_test path)
    get_filename_component(folder ${path} DIRECTORY)
    get_filename_component(name ${path} NAME)
    add_test(NAME ${path}
        COMMAND "${VEXA_SYSTEM_PYTHON}" -B -m unittest test_${name}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/${folder}")
    set_tests_properties(${path} PROPERTIES
        TIMEOUT 300
        # Packages that are not installed are downloaded once, for all tests. One at a time.
        RESOURCE_LOCK vexa-content-packages
        ENVIRONMENT "LC_ALL=C.UTF-8;VEXA_PACKAGES_DIR=${PROJECT_BINARY_DIR}/packages")
endfunction()

foreach(name IN ITEMS tiles names worldparts packages regions content serve translations)
    vexa_add_python_test(tools/${name})
endforeach()
if(VEXA_BUILD_HOST)
    set_property(TEST tools/content APPEND PROPERTY
        ENVIRONMENT "VEXA_MAPS_PROGRAM=$<TARGET_FILE:vexa-maps>")
endif()

find_program(VEXA_LUPDATE lupdate HINTS "${qt_tools}" NO_DEFAULT_PATH REQUIRED)
mark_as_advanced(VEXA_LUPDATE)
set_property(TEST tools/translations APPEND PROPERTY ENVIRONMENT "VEXA_LUPDATE=${VEXA_LUPDATE}")
