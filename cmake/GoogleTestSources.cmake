# GoogleTest, built from Debian's sources with the compiler and flags of this build: the packaged library is
# neither for Windows nor under the sanitizers. Gives the targets gtest, gtest_main, gmock and gmock_main.

set(KAVRELON_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS ${KAVRELON_GOOGLETEST_DIR}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources were not found: install googletest (scripts/install-packages does)")
endif()

set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory(${KAVRELON_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
if(WIN32)
    target_include_directories(gtest BEFORE PUBLIC ${PROJECT_SOURCE_DIR}/tests/windows/googletest)
endif()
include(GoogleTest)
