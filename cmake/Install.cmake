# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The rules of `cmake --install`. The component "library" is the shared library and the licence,
# "development" everything needed to build against it, the static library and the documents, "tools"
# the programs of tools/ (see there).
include(CMakePackageConfigHelpers)

if(ZOKECC_HARDENED)
    set(zokecc_build hardened)
else()
    set(zokecc_build default)
endif()
if(ZOKECC_SMALL)
    set(zokecc_kind small)
else()
    set(zokecc_kind fast)
endif()

install(TARGETS zokecc zokecc_static EXPORT zokecc
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/zokecc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zokecc)
install(EXPORT zokecc NAMESPACE zokecc:: FILE zokecc-targets.cmake
    DESTINATION ${cmake_folder} COMPONENT development)
configure_file(cmake/zokecc-config.cmake.in ${PROJECT_BINARY_DIR}/zokecc-config.cmake @ONLY)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zokecc-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zokecc-config.cmake ${PROJECT_BINARY_DIR}/zokecc-config-version.cmake
    DESTINATION ${cmake_folder} COMPONENT development)

# The relative path from zokecc.pc to the prefix, so that the installation can be moved.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
    set(pkgconfig_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH pkgconfig_prefix /prefix/${pkgconfig_folder} /prefix)
    string(REGEX REPLACE "/$" "" pkgconfig_prefix "\${pcfiledir}/${pkgconfig_prefix}")
endif()
configure_file(cmake/zokecc.pc.in ${PROJECT_BINARY_DIR}/zokecc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zokecc.pc DESTINATION ${pkgconfig_folder} COMPONENT development)

install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT library)
install(FILES README.md CHANGELOG.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.c" PATTERN "*.h")

if(ZOKECC_MANUAL)
    file(GLOB zokecc_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/zokecc/*.h)
    add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/manual.stamp
        COMMAND ${PROJECT_SOURCE_DIR}/cmake/manual.sh ${PROJECT_BINARY_DIR}/manual
        COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/manual.stamp
        DEPENDS ${zokecc_headers} docs/Doxyfile cmake/manual.sh cmake/man_pages.py
        COMMENT "Making the man pages of the calls" VERBATIM)
    add_custom_target(zokecc_manual ALL DEPENDS ${PROJECT_BINARY_DIR}/manual.stamp)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/manual/man/man3 DESTINATION ${CMAKE_INSTALL_MANDIR}
        COMPONENT development)
endif()
