# SPDX-License-Identifier: MIT
# What the pages in doc/ say is run, read and compared here, straight from the pages.
function(vexa_add_page_test name)
    vexa_add_test(doc/${name} ${ARGN})
    target_compile_definitions(tst_${name} PRIVATE VEXA_DOC_DIR="${PROJECT_SOURCE_DIR}/doc")
endfunction()

vexa_add_page_test(qmlsnippets)
if(VEXA_BUILD_HOST)
    vexa_add_page_test(filespage LIBRARIES vexa_host)
endif()

foreach(name IN ITEMS links loglines)
    add_test(NAME doc/${name}
        COMMAND "${VEXA_SYSTEM_PYTHON}" -B -m unittest test_${name}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/doc")
    set_tests_properties(doc/${name} PROPERTIES ENVIRONMENT "LC_ALL=C.UTF-8")
endforeach()

# The host of host.md is built as it stands there: with the options of a host and not with ours.
if(NOT VEXA_SANITIZE)
    set(page "${PROJECT_SOURCE_DIR}/doc/host.md")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${page}")
    file(READ "${page}" text)
    if(NOT text MATCHES "\n```cpp\n([^`]+)```")
        message(FATAL_ERROR "${page} has no C++ in it")
    endif()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/pages/host.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "${CMAKE_MATCH_1}" @ONLY)
    add_executable(hostfrompage "${source}")
    target_compile_options(hostfrompage PRIVATE -Wall -Wextra -Werror)
    target_link_libraries(hostfrompage PRIVATE Vexa::Vexa)
    vexa_add_page_test(hostpage)
    target_compile_definitions(tst_hostpage PRIVATE VEXA_HOST_PROGRAM="$<TARGET_FILE:hostfrompage>")
    add_dependencies(tst_hostpage hostfrompage)
endif()
