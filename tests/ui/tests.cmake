# SPDX-License-Identifier: MIT
if(NOT TARGET vexa_ui)
    return()
endif()
vexa_add_test(ui/uipages LIBRARIES vexa_ui vexa_hosttest TIMEOUT 400)
vexa_add_test(ui/uiparts LIBRARIES vexa_ui)
vexa_add_test(ui/uismooth LIBRARIES vexa_ui vexa_hosttest TIMEOUT 400)
vexa_add_test(ui/uiupdate LIBRARIES vexa_ui vexa_hosttest TIMEOUT 400)
set_tests_properties(ui/uipages ui/uiparts ui/uismooth ui/uiupdate PROPERTIES
    ENVIRONMENT_MODIFICATION "QT_QUICK_BACKEND=set:software")

# On a display of its own, where there is a server for such.
find_program(VEXA_XVFB_RUN xvfb-run)
if(VEXA_XVFB_RUN)
    vexa_add_test(ui/uiendtoend LIBRARIES vexa_ui vexa_hosttest TIMEOUT 400
        LAUNCHER "${VEXA_XVFB_RUN}" --auto-servernum)
    set_tests_properties(ui/uiendtoend PROPERTIES ENVIRONMENT_MODIFICATION
        "QT_QPA_PLATFORM=set:xcb;QT_QUICK_BACKEND=set:software")
endif()

# Every page in both shapes and colours, in each language: their texts differ in length, and Arabic
# goes from right to left.
foreach(language IN ITEMS en_GB de_DE fi_FI fr_FR es_ES ru_RU ja_JP zh_CN ar_EG)
    add_test(NAME ui/self_test_${language}
        COMMAND vexa-maps-ui --self-test --locale ${language})
    set_tests_properties(ui/self_test_${language} PROPERTIES
        TIMEOUT 180
        ENVIRONMENT "${VEXA_TEST_ENVIRONMENT};QT_QUICK_BACKEND=software")
endforeach()

# Makes the pictures of doc/screenshots; run by tools/screenshots.
add_executable(vexa_screenshots EXCLUDE_FROM_ALL ui/screenshots.cpp)
vexa_build_settings(vexa_screenshots)
target_link_libraries(vexa_screenshots PRIVATE vexa_ui)
