# What a program with windows needs besides its code.
if(WIN32)
    enable_language(RC)
endif()

# On Windows: no console of its own, and a manifest, an icon and the version inside.
function(plum_window_program target description)
    if(NOT WIN32)
        return()
    endif()
    get_target_property(file ${target} OUTPUT_NAME)
    if(NOT file)
        set(file ${target})
    endif()
    cmake_path(REMOVE_EXTENSION file OUTPUT_VARIABLE file)
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    set(resource_folder ${PROJECT_SOURCE_DIR}/src/platform/win32/resources)
    string(REPLACE "." "," version_numbers ${PROJECT_VERSION})
    configure_file(${resource_folder}/program.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources} PROPERTIES
        OBJECT_DEPENDS "${resource_folder}/plum.ico;${resource_folder}/plum.manifest")
    target_sources(${target} PRIVATE ${resources})
    set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
endfunction()
