# SPDX-License-Identifier: MIT
vexa_add_test(plugin/dataroot)
vexa_add_test(plugin/logger LABELS stress)
vexa_add_test(plugin/qmlmodule)
vexa_add_test(plugin/shell LIBRARIES vexa_fakesystem vexa_inner)
vexa_add_test(plugin/translations)
vexa_add_test(plugin/vexa)
vexa_add_test(plugin/vexaconstants)
vexa_add_test(plugin/vexasettings LABELS stress)

# Not linked with the library on purpose.
add_executable(qmlloader plugin/qmlloader.cpp)
vexa_build_settings(qmlloader)
target_link_libraries(qmlloader PRIVATE ${VEXA_QT}::Qml)
add_dependencies(tst_qmlmodule qmlloader)
target_compile_definitions(tst_qmlmodule PRIVATE VEXA_QML_LOADER="$<TARGET_FILE:qmlloader>")

find_program(VEXA_LRELEASE lrelease HINTS "${qt_tools}" NO_DEFAULT_PATH REQUIRED)
mark_as_advanced(VEXA_LRELEASE)
target_compile_definitions(tst_translations PRIVATE VEXA_LRELEASE="${VEXA_LRELEASE}")
