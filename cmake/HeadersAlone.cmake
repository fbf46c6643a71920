# kavrelon_check_headers(FOLDER...): the target headers_alone, which compiles each header of these folders by itself,
# twice in a row, so that none leans on what its users include before it.
#
# X.h needs no compiling where there is an X.cpp, which includes it first (scripts/check-seam sees to that). Portable
# headers are compiled in native builds, the platform's in Windows builds.
function(kavrelon_check_headers)
    set(patterns ${ARGV})
    list(TRANSFORM patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/*.h")
    file(GLOB_RECURSE headers RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${patterns})
    if(WIN32)
        set(side INCLUDE)
    else()
        set(side EXCLUDE)
    endif()
    list(FILTER headers ${side} REGEX "(^|/)(win32|com)/|^gdi/|^tests/windows/")

    set(sources "")
    foreach(header IN LISTS headers)
        cmake_path(REPLACE_EXTENSION header LAST_ONLY .cpp OUTPUT_VARIABLE source)
        if(EXISTS ${PROJECT_SOURCE_DIR}/${source})
            continue()
        endif()
        set(source ${PROJECT_BINARY_DIR}/headers-alone/${source})
        file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
        list(APPEND sources ${source})
    endforeach()

    add_library(headers_alone OBJECT ${sources})
    # What is looked for are errors: no time for what only running code needs.
    target_compile_options(headers_alone PRIVATE -O0 -g0 $<$<NOT:$<BOOL:${WIN32}>>:-fno-sanitize=all>)
    target_link_libraries(headers_alone PRIVATE kavrelon_options GTest::gmock)
    if(WIN32)
        target_link_libraries(headers_alone PRIVATE kavrelon_idl)
    endif()
endfunction()
