# GoogleTest: gives the targets GTest::gtest, GTest::gmock and GTest::gtest_main.

if(NOT WIN32)
    find_package(GTest REQUIRED)
    return()
endif()

# There is no package for Windows: built from Debian's sources with the compiler of this build.
set(KAVRELON_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS ${KAVRELON_GOOGLETEST_DIR}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources were not found: install googletest (scripts/install-packages does)")
endif()

set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory(${KAVRELON_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
target_include_directories(gtest BEFORE PUBLIC ${PROJECT_SOURCE_DIR}/tests/windows/googletest)
foreach(library gtest gmock)
    # Tests spend no time in it.
    target_compile_options(${library} PRIVATE -O0)
endforeach()
