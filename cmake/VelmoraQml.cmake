# velmora_qml_module(NAME URI Velmora.Kit DEPENDS … [RESOURCES …]): the QML module of the folder it is called in, its views
# (*.qml) and the C++ models beside them, as a static library. Its QML is compiled ahead of time and linked in, so nothing
# of it is parsed when the program starts. A view whose file begins with "pragma Singleton" is one. velmora_ui (src/ui) links
# the modules into a program.
function(velmora_qml_module name)
    cmake_parse_arguments(ARG "" "URI" "RESOURCES;DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "*.cpp" "*.h")
    file(GLOB views CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "*.qml")
    foreach(view IN LISTS views)
        file(STRINGS "${view}" first LIMIT_COUNT 1)
        if(first MATCHES "^pragma Singleton")
            set_source_files_properties("${view}" PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
        endif()
        string(REPLACE "." "_" compiled "${name}_${view}")
        set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/.rcc/qmlcache/${compiled}.cpp"
            PROPERTIES COMPILE_OPTIONS -Wno-shadow) # the QML compiler's own style
    endforeach()
    string(REPLACE "." "/" path "${ARG_URI}")
    qt_add_qml_module(${name} STATIC
        URI ${ARG_URI}
        VERSION 1.0
        OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/qml/${path}"
        RESOURCE_PREFIX /qt/qml
        SOURCES ${sources}
        QML_FILES ${views}
        RESOURCES ${ARG_RESOURCES})
    velmora_rerun_moc_for_new_files(${name} ${sources})
    target_include_directories(${name}
        PUBLIC "${PROJECT_BINARY_DIR}/include/${name}"
        PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}") # the generated registration names headers without their folder
    velmora_expose_folder(${name})
    target_link_libraries(${name} PUBLIC Qt6::Quick ${ARG_DEPENDS})
    if(TARGET velmora_pch)
        target_precompile_headers(${name} REUSE_FROM velmora_pch)
    endif()
endfunction()
