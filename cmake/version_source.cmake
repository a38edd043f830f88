# Writes the source that says the version and the commit; a file that says them already stays as it is.
#   cmake -DVERSION= -DTREE= -DTEMPLATE= -DOUTPUT= -P version_source.cmake
set(commit "")
if(EXISTS ${TREE}/.git)
    execute_process(COMMAND git -C ${TREE} describe --always --exclude * --abbrev=10 --dirty=+
        OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
else()
    # In an archive that git made its commit stands in this file.
    file(READ ${TREE}/cmake/commit.txt archived)
    if(archived MATCHES "^([0-9a-f]+)(\\+?)")
        string(SUBSTRING ${CMAKE_MATCH_1} 0 10 commit)
        string(APPEND commit "${CMAKE_MATCH_2}")
    endif()
endif()
set(version ${VERSION})
if(commit)
    string(APPEND version " (${commit})")
endif()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
