# Two Debian packages, by `cpack --preset package` and `cpack --preset package-armel`: the shared
# library for devices, and what a build against it needs.
option(ZOKECC_PACKAGES "Prepare Debian packages" OFF)
set(ZOKECC_DEBIAN_ARCHITECTURE "" CACHE STRING "Debian's name for the processor; this machine's if empty")
if(NOT ZOKECC_PACKAGES)
    return()
endif()
if(CMAKE_CROSSCOMPILING AND NOT ZOKECC_DEBIAN_ARCHITECTURE)
    message(FATAL_ERROR "Packages of a cross build need ZOKECC_DEBIAN_ARCHITECTURE")
endif()

set(runtime_package libzokecc${PROJECT_VERSION_MAJOR})
set(development_package libzokecc-dev)
set(package_revision 1)
set(package_version ${PROJECT_VERSION}-${package_revision})

install(FILES cmake/debian/copyright DESTINATION share/doc/${runtime_package} COMPONENT runtime)
install(FILES cmake/debian/copyright CHANGELOG.md DESTINATION share/doc/${development_package}
        COMPONENT development)
install(DIRECTORY examples DESTINATION share/doc/${development_package} COMPONENT development
        FILES_MATCHING PATTERN "*.c" PATTERN "*.h")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${package_revision})
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${ZOKECC_DEBIAN_ARCHITECTURE})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "zokecc developers <zokecc@example.org>")
set(CPACK_DEBIAN_PACKAGE_SOURCE zokecc)
# Lets the packages for two processors be installed side by side. It travels behind the section's
# name, since CMake 3.25 does not know this field.
set(multi_arch "\nMulti-Arch: same")
# The first line of a component's description takes the summary's place.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

# The oldest glibc that the imports are found in; a check of the packages holds it against them.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs${multi_arch}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6 (>= 2.14)")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}, shared library
SM2, ECDSA, Diffie-Hellman, SM3, SHA-256 and HMAC over prime curves of up to 256 bits.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel${multi_arch}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${package_version}), libc6-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION}, development files
Headers, static library, examples, and what CMake and pkg-config need to find them.")

# For dpkg-shlibdeps and ldconfig. CPack could make them from the library, but with more tools.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/shlibs @ONLY CONTENT
    "libzokecc @PROJECT_VERSION_MAJOR@ @runtime_package@ (>= @PROJECT_VERSION@)\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${PROJECT_BINARY_DIR}/shlibs ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
