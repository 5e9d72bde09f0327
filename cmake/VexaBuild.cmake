# SPDX-License-Identifier: MIT
# Compiler settings that the library, the programs and the tests share.

function(vexa_build_settings target)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}")
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
    if(VEXA_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(VEXA_SANITIZE)
        list(JOIN VEXA_SANITIZE "," sanitizers)
        target_compile_definitions(${target} PRIVATE VEXA_SANITIZED)
        target_compile_options(${target} PRIVATE -fsanitize=${sanitizers} -fno-omit-frame-pointer
            -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${sanitizers})
    endif()
    if(VEXA_FUZZ) # the counters that the fuzzer reads; the fuzzer itself is linked in fuzz/
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(VEXA_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -O0 -fprofile-update=atomic)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# vexa_inner: objects of the library that our own programs, tests and fuzzers link as well, so that it
# need not export what no host is meant to use. Only for what keeps no state: there are two of each.
function(vexa_inner_library target)
    list(JOIN ARGN "|" names)
    add_library(vexa_inner STATIC
        "$<FILTER:$<TARGET_OBJECTS:${target}>,INCLUDE,/(${names})\\.cpp\\.o$>")
    set_target_properties(vexa_inner PROPERTIES LINKER_LANGUAGE CXX AUTOMOC OFF)
    target_link_libraries(vexa_inner PUBLIC Vexa::Vexa)
endfunction()

# Most of the compile time goes into Qt's headers. With VEXA_PRECOMPILED_HEADERS they are compiled
# once a target; each source still includes what it uses, because usual builds have none of this.
function(vexa_precompile target)
    if(VEXA_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()
