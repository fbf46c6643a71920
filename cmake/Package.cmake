# What `cmake --install` lays out for those who write hosts, and what a release's archive is made of: the Windows build
# gives everything, the native one the recogniser alone. The folder that it is installed to works from any place.

include(CMakePackageConfigHelpers)
set(package_version ${CMAKE_CURRENT_BINARY_DIR}/kavrelon-config-version.cmake)
write_basic_package_version_file(${package_version} COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES ${PROJECT_SOURCE_DIR}/cmake/package/kavrelon-config.cmake ${package_version} DESTINATION cmake)
install(DIRECTORY recognizer DESTINATION src FILES_MATCHING PATTERN *.h PATTERN *.cpp)

if(WIN32)
    set(idl ${PROJECT_BINARY_DIR}/idl)
    install(TARGETS kavrelon samplehost RUNTIME DESTINATION .)
    install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/kavrelon.manifest DESTINATION .)
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/package/install.cmd DESTINATION .)
    install(FILES ${idl}/kavrelon.h ${idl}/quillabor.h DESTINATION include)
    install(FILES ${idl}/kavrelon_i.c ${idl}/quillabor_i.c DESTINATION src)
    install(FILES ${PROJECT_SOURCE_DIR}/idl/kavrelon.idl ${idl}/quillabor.idl ${idl}/kavrelon.tlb ${idl}/quillabor.tlb
        DESTINATION idl)
    install(DIRECTORY docs/minimal-host DESTINATION docs)
    install(DIRECTORY samplehost DESTINATION .)
endif()
