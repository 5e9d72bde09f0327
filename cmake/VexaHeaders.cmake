# SPDX-License-Identifier: MIT
# The headers that a host includes as <vexa/NAME.h>, and the QML module in the build tree.
include(GenerateExportHeader)

# Each folder adds its public headers to the target's VEXA_HEADERS. Ours include each other from
# the source root ("catalog/mapregion.h"); installed they lie side by side, so the folder goes.
function(vexa_public_headers target)
    set(folder "${PROJECT_BINARY_DIR}/include/vexa")
    generate_export_header(${target} BASE_NAME VEXA EXPORT_FILE_NAME "${folder}/vexa_export.h")
    get_target_property(headers ${target} VEXA_HEADERS)
    foreach(header IN LISTS headers)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
        file(READ "${header}" text)
        string(REGEX REPLACE "#include \"(plugin|catalog|cityindex|download|archive)/([a-z_]+\\.h)\""
            "#include \"\\2\"" text "${text}")
        get_filename_component(name "${header}" NAME)
        file(CONFIGURE OUTPUT "${folder}/${name}" CONTENT "${text}" @ONLY)
    endforeach()
    target_include_directories(${target}
        PRIVATE "${folder}"
        INTERFACE
            "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>"
            "$<BUILD_INTERFACE:${folder}>"
            "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/vexa-qt${QT_VERSION_MAJOR}>")
endfunction()

# Used by the folders: sources and public headers of the library, relative to the folder.
function(vexa_sources)
    cmake_parse_arguments(arg "" "" "SOURCES;HEADERS;PRIVATE_HEADERS" ${ARGN})
    foreach(file IN LISTS arg_SOURCES arg_HEADERS arg_PRIVATE_HEADERS)
        target_sources(vexa PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
    endforeach()
    foreach(file IN LISTS arg_HEADERS)
        set_property(TARGET vexa APPEND PROPERTY VEXA_HEADERS "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
    endforeach()
endfunction()

# `import Vexa 1.0` in the build tree: qml/Vexa with the qmldir and a link to the library. A link
# and not a copy: two copies would run the load-time initialisers twice.
function(vexa_qml_module target)
    set(module "${PROJECT_BINARY_DIR}/qml/Vexa")
    file(MAKE_DIRECTORY "${module}")
    configure_file("${PROJECT_SOURCE_DIR}/plugin/qmldir" "${module}/qmldir" COPYONLY)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E create_symlink "$<TARGET_FILE:${target}>" "${module}/libvexa.so"
        VERBATIM)
endfunction()
