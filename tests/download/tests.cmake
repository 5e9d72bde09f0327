# SPDX-License-Identifier: MIT
vexa_add_test(download/httpanswer LIBRARIES vexa_inner)
vexa_add_test(download/savefile LIBRARIES vexa_inner)
vexa_add_test(download/suspension)
vexa_add_test(download/httplimits)
vexa_add_test(download/httpfaults)
vexa_add_test(download/httptimeout)
vexa_add_test(download/httpcancel)
vexa_add_test(download/nginxtransfer)
vexa_add_test(download/httpresume)
vexa_add_test(download/testdownload)
vexa_add_test(download/httptransfer)
vexa_add_test(download/mainloop)
vexa_add_test(download/request)
vexa_add_test(download/download)
vexa_add_test(download/requestqueue)
vexa_add_test(download/requestqueuethreads LABELS stress)
vexa_add_test(download/requestqueuerestore)
vexa_add_test(download/worker)
vexa_add_test(download/workerend)
vexa_add_test(download/downloadmanageriface)
vexa_add_test(download/downloadmanagerifacemeta)
vexa_add_test(download/downloadmanagerifaceqml)

add_library(vexa_steptest STATIC
    download/stepengine.cpp download/stepengine.h)
vexa_build_settings(vexa_steptest)
target_link_libraries(vexa_steptest PUBLIC vexa_fakesystem)
vexa_precompile_like_tests(vexa_steptest)
vexa_add_test(download/uncompress LIBRARIES vexa_steptest)
vexa_add_test(download/move LIBRARIES vexa_steptest)
vexa_add_test(download/networkchange)
# They make one engine after the other in the same place. The checker is not told when a QMutex goes
# and takes the next one there for the same, so it sees orders of locks that never were.
set_property(TEST download/uncompress download/move APPEND PROPERTY ENVIRONMENT
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/tsan.supp:detect_deadlocks=0:die_after_fork=0")

# Loaded into programs without sanitizers too, so it gets no build settings.
add_library(vexa_killpoints SHARED download/killpoints.cpp)
target_compile_options(vexa_killpoints PRIVATE -Wall -Wextra)
target_link_libraries(vexa_killpoints PRIVATE ${CMAKE_DL_LIBS})
add_executable(killchild download/killchild.cpp)
vexa_build_settings(killchild)
# First, so that the calls of all other libraries go through it.
target_link_libraries(killchild PRIVATE
    -Wl,--no-as-needed vexa_killpoints -Wl,--as-needed Vexa::Vexa)
vexa_add_test(download/killchain LIBRARIES vexa_steptest TIMEOUT 900 LABELS sweep)
target_compile_definitions(tst_killchain PRIVATE VEXA_KILLCHILD="$<TARGET_FILE:killchild>")
add_dependencies(tst_killchain killchild)
# Worth its time under the thread checker above all: ctest --preset tsan -L stress
vexa_add_test(download/stress LABELS stress)
set_tests_properties(download/stress download/requestqueuethreads PROPERTIES
    # Without die_after_fork=0: a thread that starts a program is let off by the checker for good.
    # These tests start none, and would end at once if they did.
    ENVIRONMENT_MODIFICATION
        "TSAN_OPTIONS=set:suppressions=${PROJECT_SOURCE_DIR}/cmake/tsan.supp")
