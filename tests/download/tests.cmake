# SPDX-License-Identifier: MIT
vexa_add_test(download/httpanswer)
vexa_add_test(download/savefile)
vexa_add_test(download/suspension)
vexa_add_test(download/mainloop)
vexa_add_test(download/request)
vexa_add_test(download/download)
vexa_add_test(download/requestqueue)
vexa_add_test(download/requestqueuethreads)
vexa_add_test(download/requestqueuerestore)

add_library(vexa_steptest STATIC
    download/fakesystem.cpp download/fakesystem.h
    download/stepengine.cpp download/stepengine.h)
vexa_build_settings(vexa_steptest)
target_link_libraries(vexa_steptest PUBLIC vexa_testutils ${CMAKE_DL_LIBS})
vexa_add_test(download/shell LIBRARIES vexa_steptest)
vexa_add_test(download/uncompress LIBRARIES vexa_steptest)
vexa_add_test(download/move LIBRARIES vexa_steptest)
