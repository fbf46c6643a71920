# GoogleTest, built from Debian's sources with the compiler and flags of this build: the packaged library is
# neither for Windows nor under the sanitizers. Gives the targets gtest, gtest_main and gmock.

set(KAVRELON_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS ${KAVRELON_GOOGLETEST_DIR}/CMakeLists.txt)
    message(FATAL_ERROR "GoogleTest's sources were not found: install googletest (scripts/install-packages does)")
endif()

set(INSTALL_GTEST OFF CACHE INTERNAL "")
if(WIN32)
    # The compiler's win32 thread variant has no std::mutex; a test program needs one thread only.
    set(gtest_disable_pthreads ON CACHE INTERNAL "")
endif()
add_subdirectory(${KAVRELON_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
include(GoogleTest)
