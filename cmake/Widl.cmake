# kavrelon_add_idl(TARGET IDL [IMPORTED...]): compiles one IDL file of the current folder with widl.
#
# NAME.idl gives NAME.h (declarations), NAME_i.c (identifiers) and NAME.tlb (type library) in the current
# build folder. TARGET is a static library of the identifiers; what links it sees the header and is compiled
# after it. Its property KAVRELON_TYPELIB holds the type library's path. IMPORTED are files that NAME.idl
# imports and that it must be compiled after. Where there is a NAME.idl.in, that one is filled in with CMake's
# @VARIABLES@ first, for identifiers that are configurable.

find_program(KAVRELON_WIDL i686-w64-mingw32-widl)
find_program(KAVRELON_FAKETIME faketime)
find_path(KAVRELON_IDL_DIR oaidl.idl
    PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
    NO_CMAKE_FIND_ROOT_PATH)
find_path(KAVRELON_STDOLE_DIR stdole2.tlb
    PATHS /usr/lib/i386-linux-gnu/wine/i386-windows /usr/lib/wine/i386-windows
    NO_CMAKE_FIND_ROOT_PATH)

function(kavrelon_require variable what package)
    if(NOT ${variable})
        message(FATAL_ERROR "${what} was not found: install ${package} (scripts/install-packages does)")
    endif()
endfunction()

kavrelon_require(KAVRELON_WIDL "The IDL compiler i686-w64-mingw32-widl" mingw-w64-tools)
kavrelon_require(KAVRELON_FAKETIME "faketime" faketime)
kavrelon_require(KAVRELON_IDL_DIR "oaidl.idl" libwine-dev)
kavrelon_require(KAVRELON_STDOLE_DIR "The type library stdole2.tlb" libwine:i386)

function(kavrelon_add_idl target idl)
    cmake_path(GET idl STEM name)
    set(base ${CMAKE_CURRENT_BINARY_DIR}/${name})
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${idl}.in)
        configure_file(${idl}.in ${base}.idl @ONLY)
    else()
        configure_file(${idl} ${base}.idl COPYONLY)
    endif()

    # widl writes the time into type libraries, and what it was told of the source's place into headers: it gets a
    # time that stands still, and the bare name of a copy.
    add_custom_command(
        OUTPUT ${base}.h ${base}_i.c ${base}.tlb
        COMMAND ${CMAKE_COMMAND} -E env TZ=UTC ${KAVRELON_FAKETIME} -f "2000-01-01 00:00:00" ${KAVRELON_WIDL} --win32
            -I ${KAVRELON_IDL_DIR} -I ${CMAKE_CURRENT_BINARY_DIR} -L ${KAVRELON_STDOLE_DIR} -L ${CMAKE_CURRENT_BINARY_DIR}
            -h -H ${base}.h -u -U ${base}_i.c -t ${name}.idl
        WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
        DEPENDS ${base}.idl ${ARGN}
        COMMENT "Compiling ${idl}"
        VERBATIM)

    # The identifiers are plain data: the file is compiled as C++, so that the project needs no C compiler.
    set_source_files_properties(${base}_i.c PROPERTIES LANGUAGE CXX)
    add_library(${target} STATIC ${base}_i.c ${base}.h)
    target_include_directories(${target} SYSTEM PUBLIC ${CMAKE_CURRENT_BINARY_DIR})
    set_target_properties(${target} PROPERTIES KAVRELON_TYPELIB ${base}.tlb)
endfunction()
