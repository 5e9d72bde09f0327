# SPDX-License-Identifier: MIT
add_library(vexa_testutils STATIC
    testutils/archivebuilder.cpp testutils/archivebuilder.h
    testutils/childprogram.cpp testutils/childprogram.h
    testutils/httptestbehaviour.cpp testutils/httptestplan.h
    testutils/httptestconnection.cpp testutils/httptestconnection.h
    testutils/httptestserver.cpp testutils/httptestserver.h
    testutils/killorders.cpp testutils/killorders.h
    testutils/logcatcher.cpp testutils/logcatcher.h
    testutils/nginxserver.cpp testutils/nginxserver.h
    testutils/reporttable.cpp testutils/reporttable.h
    testutils/smalldisk.cpp testutils/smalldisk.h
    testutils/temporaryhome.cpp testutils/temporaryhome.h)
vexa_build_settings(vexa_testutils)
target_include_directories(vexa_testutils PUBLIC "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(vexa_testutils PUBLIC
    Vexa::Vexa ${VEXA_QT}::Network ${VEXA_QT}::Test Threads::Threads)
target_compile_definitions(vexa_testutils PRIVATE VEXA_REPORT_DIR="${PROJECT_BINARY_DIR}/reports")

# Replaces functions of the C library in the whole program, so only those tests link it that need it.
add_library(vexa_fakesystem STATIC testutils/fakesystem.cpp testutils/fakesystem.h)
vexa_build_settings(vexa_fakesystem)
target_link_libraries(vexa_fakesystem PUBLIC vexa_testutils ${CMAKE_DL_LIBS})

vexa_precompile_like_tests(vexa_testutils vexa_fakesystem)

vexa_add_test(testutils/childprogram)
vexa_add_test(testutils/httptestserver LABELS stress)
vexa_add_test(testutils/nginxserver)
vexa_add_test(testutils/reporttable)
