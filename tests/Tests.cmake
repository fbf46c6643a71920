# What test programs are made of, and the parts by which they can be built and run alone.

# Each test carries the names of its parts as labels, and the target part-NAME builds what the tests of a part need:
# ./test NAME uses both. A part is a room; checks are those of the sources.
foreach(part IN ITEMS support recognizer htmllabel helpbox terminal plugin samplehost checks)
    add_custom_target(part-${part})
endforeach()

# kavrelon_test_parts(TEST PART... [NEEDS TARGET...]): the parts that a test belongs to, and what it needs built.
function(kavrelon_test_parts test)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" NEEDS)
    set_tests_properties(${test} PROPERTIES LABELS "${arg_UNPARSED_ARGUMENTS}")
    foreach(part IN LISTS arg_UNPARSED_ARGUMENTS)
        if(arg_NEEDS)
            add_dependencies(part-${part} ${arg_NEEDS})
        endif()
    endforeach()
endfunction()

# What tests include of GoogleTest and the standard library is compiled once for all of them.
set(headers <gmock/gmock.h> <gtest/gtest.h>
    <algorithm> <array> <cstdint> <filesystem> <functional> <memory> <optional> <ostream> <stdexcept> <string>
    <string_view> <utility> <vector>)
if(WIN32)
    list(PREPEND headers <windows.h>)
endif()
set(empty ${CMAKE_CURRENT_BINARY_DIR}/test_headers.cpp)
file(CONFIGURE OUTPUT ${empty} CONTENT "")
add_library(test_headers OBJECT EXCLUDE_FROM_ALL ${empty})
target_link_libraries(test_headers PRIVATE kavrelon_options GTest::gmock)
target_compile_options(test_headers PRIVATE -O0)
target_precompile_headers(test_headers PRIVATE ${headers})

# kavrelon_add_test_program(NAME SOURCE...)
function(kavrelon_add_test_program name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE kavrelon_options GTest::gmock GTest::gtest_main)
    # Compiling tests takes longer than running them.
    target_compile_options(${name} PRIVATE -O0)
    target_precompile_headers(${name} REUSE_FROM test_headers)
endfunction()
