# One function for a folder of the program, one for a test program.

# velmora_library(NAME DEPENDS … [PRIVATE_DEPENDS …]): a static library of all sources in the folder it is called in.
# Its headers are included from src/ ("core/app_settings.h"); it sees those of its DEPENDS and no others.
function(velmora_library name)
    cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE_DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "*.cpp" "*.h")
    list(FILTER sources EXCLUDE REGEX "/pch\\.(cpp|h)$")
    add_library(${name} STATIC ${sources})
    velmora_rerun_moc_for_new_files(${name} ${sources})
    target_include_directories(${name} PUBLIC "${PROJECT_BINARY_DIR}/include/${name}")
    velmora_expose_folder(${name})
    target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS})
    if(TARGET velmora_pch)
        target_precompile_headers(${name} REUSE_FROM velmora_pch)
    endif()
endfunction()

# Ninja reruns moc only for files that its last run knew; this makes it look again when there are others.
function(velmora_rerun_moc_for_new_files name)
    set(known "")
    set(list "${CMAKE_CURRENT_BINARY_DIR}/${name}_files.txt")
    if(EXISTS "${list}")
        file(READ "${list}" known)
    endif()
    if(NOT known STREQUAL "${ARGN}")
        file(REMOVE "${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp")
        file(WRITE "${list}" "${ARGN}")
    endif()
endfunction()

# Gives a target an include path that holds its own folder alone, so that an include of a folder it doesn't link fails.
function(velmora_expose_folder name)
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}/src" "${CMAKE_CURRENT_SOURCE_DIR}")
    set(root "${PROJECT_BINARY_DIR}/include/${name}")
    get_filename_component(parent "${root}/${folder}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${folder}" SYMBOLIC)
endfunction()

# velmora_test(NAME LABEL unit|adapters|e2e DEPENDS … [DESKTOP] [ALONE] [TIMEOUT seconds]): a GoogleTest program of all sources
# in the folder it is called in, and its CTest entry. With DESKTOP it runs inside a virtual desktop of its own,
# with ALONE beside no other test: it works real programs that take the whole machine.
function(velmora_test name)
    cmake_parse_arguments(ARG "DESKTOP;ALONE" "LABEL;TIMEOUT" "DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "*.cpp" "*.h")
    add_executable(${name} ${sources})
    velmora_rerun_moc_for_new_files(${name} ${sources})
    target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} velmora_test_support)
    if(TARGET velmora_test_pch)
        target_precompile_headers(${name} REUSE_FROM velmora_test_pch)
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    if(ARG_DESKTOP)
        add_test(NAME ${name}
            COMMAND "${PROJECT_SOURCE_DIR}/scripts/virtual-desktop" -- $<TARGET_FILE:${name}>)
    else()
        add_test(NAME ${name} COMMAND ${name})
    endif()
    velmora_label_test(${name} ${ARG_LABEL} ${ARG_TIMEOUT})
    set_tests_properties(${name} PROPERTIES RUN_SERIAL "${ARG_ALONE}")
endfunction()

# Labels the CTest entry NAME, which runs the target NAME. The target LABEL_tests builds all programs of a label.
function(velmora_label_test name label timeout)
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT ${timeout})
    if(NOT TARGET ${label}_tests)
        add_custom_target(${label}_tests)
    endif()
    add_dependencies(${label}_tests ${name})
endfunction()
