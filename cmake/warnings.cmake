# One place for what every target of this project is compiled with.
add_library(plum_options INTERFACE)
target_compile_features(plum_options INTERFACE cxx_std_20)
if(MSVC)
    target_compile_options(plum_options INTERFACE /W4 /utf-8)
else()
    target_compile_options(plum_options INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -Wno-error=deprecated-declarations)
endif()
target_compile_definitions(plum_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
if(PLUM_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_compile_options(plum_options INTERFACE ${sanitizers} -O1 -g)
    target_link_options(plum_options INTERFACE ${sanitizers})
endif()

# A floor of the house: a static library whose precompiled header holds Qt alone.
function(plum_floor name)
    cmake_parse_arguments(arg "" "PCH" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC plum_options ${arg_LINK})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    if(arg_PCH)
        target_precompile_headers(${name} PRIVATE ${arg_PCH})
    endif()
endfunction()
