# SPDX-License-Identifier: MIT
if(NOT VEXA_BUILD_HOST)
    return()
endif()
add_library(vexa_hosttest STATIC
    host/disksize.h
    host/fakenetworkmanager.cpp host/fakenetworkmanager.h
    host/installerrig.h
    host/lintrig.h
    host/mapsprogram.h
    host/swaprig.h
    host/swapstates.h
    host/testcontent.cpp host/testcontent.h
    host/updaterig.h)
vexa_build_settings(vexa_hosttest)
target_include_directories(vexa_hosttest PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/host")
target_link_libraries(vexa_hosttest PUBLIC vexa_host vexa_testutils)
target_compile_definitions(vexa_hosttest PUBLIC VEXA_MAPS_PROGRAM="$<TARGET_FILE:vexa-maps>")
add_dependencies(vexa_hosttest vexa-maps)
set_target_properties(vexa_hosttest PROPERTIES AUTOMOC ON) # a class that stands for a D-Bus service
vexa_precompile_like_tests(vexa_hosttest)

vexa_add_test(host/catalogrefresher LIBRARIES vexa_hosttest)
vexa_add_test(host/cli LIBRARIES vexa_hosttest)
vexa_add_test(host/clicities LIBRARIES vexa_hosttest)
vexa_add_test(host/clidryrun LIBRARIES vexa_hosttest)
vexa_add_test(host/cliinstall LIBRARIES vexa_hosttest)
vexa_add_test(host/cliinterrupt LIBRARIES vexa_hosttest)
vexa_add_test(host/clilint LIBRARIES vexa_hosttest)
vexa_add_test(host/clilintxml LIBRARIES vexa_hosttest)
vexa_add_test(host/clireport LIBRARIES vexa_hosttest)
vexa_add_test(host/cliupdate LIBRARIES vexa_hosttest TIMEOUT 400)
vexa_add_test(host/cliupdatefailures LIBRARIES vexa_hosttest TIMEOUT 400)
vexa_add_test(host/datasetupdate LIBRARIES vexa_hosttest)
vexa_add_test(host/hoststate LIBRARIES vexa_hosttest)
vexa_add_test(host/hostvalues LIBRARIES vexa_hosttest)
vexa_add_test(host/installercancel LIBRARIES vexa_hosttest)
vexa_add_test(host/installerfailures LIBRARIES vexa_hosttest)
vexa_add_test(host/installernetwork LIBRARIES vexa_hosttest)
vexa_add_test(host/installerpause LIBRARIES vexa_hosttest TIMEOUT 400)
vexa_add_test(host/installerqml LIBRARIES vexa_hosttest)
vexa_add_test(host/installrecovery LIBRARIES vexa_hosttest)
vexa_add_test(host/loglines LIBRARIES vexa_host)
vexa_add_test(host/networkbinding LIBRARIES vexa_hosttest)
vexa_add_test(host/networkstate LIBRARIES vexa_hosttest)
vexa_add_test(host/regioninstaller LIBRARIES vexa_hosttest)
vexa_add_test(host/regionfiltermodel LIBRARIES vexa_hosttest TIMEOUT 600)
vexa_add_test(host/regionmodel LIBRARIES vexa_host TIMEOUT 600)
vexa_add_test(host/regionmodelinstall LIBRARIES vexa_hosttest)
vexa_add_test(host/regionpreview LIBRARIES vexa_hosttest)
vexa_add_test(host/removalpreview LIBRARIES vexa_hosttest)
vexa_add_test(host/remotearchive LIBRARIES vexa_hosttest TIMEOUT 400)
vexa_add_test(host/updateinspection LIBRARIES vexa_hosttest)
vexa_add_test(host/updatepreview LIBRARIES vexa_hosttest)
vexa_add_test(host/zipdirectory LIBRARIES vexa_hosttest)

add_executable(swapchild host/swapchild.cpp)
vexa_build_settings(swapchild)
# First, so that the calls of all other libraries go through it.
target_link_libraries(swapchild PRIVATE
    -Wl,--no-as-needed vexa_killpoints -Wl,--as-needed vexa_host)
vexa_add_test(host/datasetswap LIBRARIES vexa_host TIMEOUT 600)
vexa_add_test(host/swapfaults LIBRARIES vexa_host vexa_fakesystem TIMEOUT 600)
vexa_add_test(host/swapjournal LIBRARIES vexa_host TIMEOUT 600)
vexa_add_test(host/swaprecovery LIBRARIES vexa_host TIMEOUT 600)
vexa_add_test(host/swapcommands LIBRARIES vexa_hosttest)
vexa_add_test(host/swapkill LIBRARIES vexa_host TIMEOUT 900 LABELS sweep)
foreach(name IN ITEMS datasetswap swapkill)
    target_compile_definitions(tst_${name} PRIVATE VEXA_SWAPCHILD="$<TARGET_FILE:swapchild>")
    add_dependencies(tst_${name} swapchild)
endforeach()
