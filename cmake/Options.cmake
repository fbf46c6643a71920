# The language, warnings and link options of every target of the project: link kavrelon_options.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs stand beside the DLL, so that they find it without registering or searching.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

option(KAVRELON_LTO "Optimise across translation units where the compiler can" OFF)
if(KAVRELON_LTO)
    include(CheckIPOSupported)
    check_ipo_supported(RESULT lto_works OUTPUT lto_output LANGUAGES CXX)
    if(lto_works)
        set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
    else()
        message(STATUS "No link-time optimisation: ${lto_output}")
    endif()
endif()

add_library(kavrelon_options INTERFACE)
target_include_directories(kavrelon_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(kavrelon_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror>)

if(WIN32)
    # UNICODE stays undefined: the product is a single-byte one and calls the ANSI entry points.
    target_compile_definitions(kavrelon_options INTERFACE _WIN32_WINNT=0x0601 WIN32_LEAN_AND_MEAN NOMINMAX)
    target_compile_options(kavrelon_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
    # The run-time libraries come along: nothing but system DLLs is imported.
    target_link_options(kavrelon_options INTERFACE -static -fstack-protector-strong)
    # The same sources give the same bytes, in any folder and at any time.
    target_link_options(kavrelon_options INTERFACE -Wl,--no-insert-timestamp)
    target_compile_options(kavrelon_options INTERFACE
        $<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
endif()

# Symbols are half of a file and of no use where it is used: they go to a file of their own beside it, for those who
# are to find out where it crashed.
function(kavrelon_keep_symbols_apart target)
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0
            ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
        COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0 ${CMAKE_STRIP} $<TARGET_FILE:${target}>
        VERBATIM)
endfunction()

# kavrelon_small(TARGET...): the shipped library has the code of these targets small rather than fast. For what
# runs when a user or a host does one thing, not for every byte, cell or word.
function(kavrelon_small)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE ${kavrelon_small_options})
    endforeach()
endfunction()
if(WIN32)
    set(kavrelon_small_options $<$<AND:$<CONFIG:Release>,$<COMPILE_LANGUAGE:CXX>>:-Os>)
endif()
