# velmora_qml_module(NAME URI Velmora.Kit SOURCES … QML_FILES … [RESOURCES …] DEPENDS …): a QML module of the folder it is
# called in, as a static library. Its QML is compiled ahead of time (qmlcachegen) and linked in, so nothing of it is
# parsed when the program starts. Whoever uses it links NAMEplugin, imports that with Q_IMPORT_QML_PLUGIN, and adds
# ":/qt/qml" to the engine's import paths. Needs Debian's qt6-declarative-dev and qt6-declarative-dev-tools.
function(velmora_qml_module name)
    cmake_parse_arguments(ARG "" "URI" "SOURCES;QML_FILES;RESOURCES;DEPENDS" ${ARGN})
    find_package(Qt6 6.4 REQUIRED COMPONENTS Quick)
    qt_add_qml_module(${name} STATIC
        URI ${ARG_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        SOURCES ${ARG_SOURCES}
        QML_FILES ${ARG_QML_FILES}
        RESOURCES ${ARG_RESOURCES})
    velmora_expose_folder(${name})
    target_include_directories(${name} PUBLIC "${PROJECT_BINARY_DIR}/include/${name}")
    target_link_libraries(${name} PUBLIC Qt6::Quick ${ARG_DEPENDS})
endfunction()
