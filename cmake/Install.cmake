# What `cmake --install` puts where. The component "runtime" is the shared library, "development" is
# everything that a build against it needs, and the static library.
include(CMakePackageConfigHelpers)

install(TARGETS zokecc zokecc_static EXPORT zokecc
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/zokecc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zokecc)
install(EXPORT zokecc NAMESPACE zokecc:: FILE zokecc-targets.cmake
    DESTINATION ${cmake_folder} COMPONENT development)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zokecc-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES cmake/zokecc-config.cmake ${PROJECT_BINARY_DIR}/zokecc-config-version.cmake
    DESTINATION ${cmake_folder} COMPONENT development)

# The way from zokecc.pc up to the prefix, so that the whole may be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
    set(pkgconfig_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH pkgconfig_prefix /prefix/${pkgconfig_folder} /prefix)
    string(REGEX REPLACE "/$" "" pkgconfig_prefix "\${pcfiledir}/${pkgconfig_prefix}")
endif()
configure_file(cmake/zokecc.pc.in ${PROJECT_BINARY_DIR}/zokecc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zokecc.pc DESTINATION ${pkgconfig_folder} COMPONENT development)
