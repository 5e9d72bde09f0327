# SPDX-License-Identifier: MIT
# What the store of maps promises under faults: each program goes through a list of faults, checks
# every outcome and writes them down as a table. Their long forms: tests/reliability/run --long
if(NOT VEXA_BUILD_HOST)
    return()
endif()

vexa_add_test(reliability/hostilearchives
    TIMEOUT 300 LIBRARIES vexa_hosttest LibArchive::LibArchive)
target_sources(tst_hostilearchives PRIVATE
    reliability/hostilearchive.cpp reliability/hostilearchive.h
    reliability/hostilecases.cpp reliability/hostilecases.h)

vexa_add_test(reliability/soak TIMEOUT 300)
target_sources(tst_soak PRIVATE reliability/processmeter.cpp reliability/processmeter.h)

add_library(vexa_killworld STATIC reliability/killworld.cpp reliability/killworld.h)
vexa_build_settings(vexa_killworld)
target_link_libraries(vexa_killworld PUBLIC vexa_hosttest)
target_compile_definitions(vexa_killworld PRIVATE VEXA_KILLPOINTS="$<TARGET_FILE:vexa_killpoints>")
add_dependencies(vexa_killworld vexa_killpoints)
vexa_precompile_like_tests(vexa_killworld)
vexa_add_test(reliability/killmatrix LIBRARIES vexa_killworld TIMEOUT 600 LABELS sweep)
vexa_add_test(reliability/killsweep LIBRARIES vexa_killworld TIMEOUT 600 LABELS sweep)

vexa_add_test(reliability/diskfaults LIBRARIES vexa_killworld TIMEOUT 600 LABELS sweep)
target_compile_definitions(tst_diskfaults PRIVATE VEXA_KILLPOINTS="$<TARGET_FILE:vexa_killpoints>")

vexa_add_test(reliability/servermatrix TIMEOUT 900 LIBRARIES vexa_hosttest)
target_sources(tst_servermatrix PRIVATE reliability/servermatrix.cpp reliability/servermatrix.h)

vexa_add_test(reliability/netns TIMEOUT 600 LIBRARIES vexa_hosttest)
target_sources(tst_netns PRIVATE
    reliability/faultlink.cpp reliability/faultlink.h
    reliability/nameserver.cpp reliability/nameserver.h)

# Qt would end the functions of a long form after five minutes; CTest has a limit of its own.
set_property(TEST reliability/hostilearchives reliability/soak reliability/diskfaults
    reliability/servermatrix reliability/netns
    APPEND PROPERTY ENVIRONMENT "QTEST_FUNCTION_TIMEOUT=86400000")
