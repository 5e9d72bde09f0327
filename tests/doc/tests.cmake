# SPDX-License-Identifier: MIT
# What the pages in doc/ say is run, read and compared here, straight from the pages.
function(vexa_add_page_test name)
    vexa_add_test(doc/${name} ${ARGN})
    target_compile_definitions(tst_${name} PRIVATE VEXA_DOC_DIR="${PROJECT_SOURCE_DIR}/doc")
endfunction()

vexa_add_page_test(qmlsnippets)
if(VEXA_BUILD_HOST)
    vexa_add_page_test(filespage LIBRARIES vexa_host)
    vexa_add_page_test(qmlhostsnippets LIBRARIES vexa_hosttest)
endif()

foreach(name IN ITEMS architecture links loglines)
    add_test(NAME doc/${name}
        COMMAND "${VEXA_SYSTEM_PYTHON}" -B -m unittest test_${name}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/doc")
    set_tests_properties(doc/${name} PROPERTIES ENVIRONMENT "LC_ALL=C.UTF-8")
endforeach()

# vexa_page_program(host.md hostfrompage FRONT BACK) builds the C++ of a page as it stands there, with
# the options of a host and not with ours; what stands in front of it and behind it may be added.
function(vexa_page_program name target front back)
    set(page "${PROJECT_SOURCE_DIR}/doc/${name}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${page}")
    file(READ "${page}" text)
    if(NOT text MATCHES "\n```cpp\n([^`]+)```")
        message(FATAL_ERROR "${page} has no C++ in it")
    endif()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/pages/${target}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "${front}${CMAKE_MATCH_1}${back}" @ONLY)
    add_executable(${target} "${source}")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()

if(NOT VEXA_SANITIZE)
    vexa_page_program(host.md hostfrompage "" "")
    target_link_libraries(hostfrompage PRIVATE Vexa::Vexa)
    vexa_add_page_test(hostpage)
    target_compile_definitions(tst_hostpage PRIVATE VEXA_HOST_PROGRAM="$<TARGET_FILE:hostfrompage>")
    add_dependencies(tst_hostpage hostfrompage)
endif()
if(VEXA_BUILD_HOST AND NOT VEXA_SANITIZE)
    vexa_page_program(qml-host.md hostobjectsfrompage
"#include <QCoreApplication>
#include <QQmlContext>
#include <QQmlEngine>
#include \"host/shared/enginesession.h\"
#include \"host/shared/hosttypes.h\"
#include \"host/shared/networkbinding.h\"
#include \"host/shared/networkstate.h\"
#include \"host/shared/regionmodel.h\"
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
"
"    return session.isRunning() ? 0 : 1;
}
")
    target_include_directories(hostobjectsfrompage PRIVATE "${PROJECT_SOURCE_DIR}")
    target_link_libraries(hostobjectsfrompage PRIVATE vexa_host)
    set(home "${CMAKE_CURRENT_BINARY_DIR}/pages/home")
    add_test(NAME doc/hostobjects COMMAND hostobjectsfrompage)
    set_tests_properties(doc/hostobjects PROPERTIES TIMEOUT 60 ENVIRONMENT
        "LC_ALL=C.UTF-8;HOME=${home};XDG_CONFIG_HOME=${home}/.config;VEXA_MYDOCS=${home}/MyDocs")
endif()
