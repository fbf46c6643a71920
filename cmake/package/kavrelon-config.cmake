# For hosts in C++:
#   find_package(kavrelon 1 REQUIRED)
#   target_link_libraries(host PRIVATE kavrelon::interfaces kavrelon::recognizer)
#
# kavrelon::interfaces: the headers quillabor.h and kavrelon.h, and the identifiers that they declare (for 32-bit Windows).
# kavrelon::recognizer: the escape-sequence recogniser, in standard C++20.
# Both are compiled along with the host, so that any compiler will do.

get_filename_component(_kavrelon "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)

if(NOT TARGET kavrelon::recognizer)
    file(GLOB _kavrelon_sources "${_kavrelon}/src/recognizer/*.cpp")
    add_library(kavrelon::recognizer INTERFACE IMPORTED)
    set_target_properties(kavrelon::recognizer PROPERTIES
        INTERFACE_SOURCES "${_kavrelon_sources}"
        INTERFACE_INCLUDE_DIRECTORIES "${_kavrelon}/src"
        INTERFACE_COMPILE_FEATURES cxx_std_20)
endif()

if(NOT WIN32 OR NOT CMAKE_SIZEOF_VOID_P EQUAL 4)
    message(STATUS "kavrelon: no kavrelon::interfaces, since this compiler's programs are not for 32-bit Windows")
elseif(NOT TARGET kavrelon::interfaces AND EXISTS "${_kavrelon}/include/kavrelon.h")
    # The identifiers are plain data: as C++, they need no C compiler.
    set_source_files_properties("${_kavrelon}/src/kavrelon_i.c" "${_kavrelon}/src/quillabor_i.c"
        PROPERTIES LANGUAGE CXX)
    add_library(kavrelon::interfaces INTERFACE IMPORTED)
    set_target_properties(kavrelon::interfaces PROPERTIES
        INTERFACE_SOURCES "${_kavrelon}/src/kavrelon_i.c;${_kavrelon}/src/quillabor_i.c"
        INTERFACE_INCLUDE_DIRECTORIES "${_kavrelon}/include"
        INTERFACE_LINK_LIBRARIES "ole32;oleaut32;uuid")
endif()

unset(_kavrelon)
unset(_kavrelon_sources)
