# The package: library, headers, and the files by which CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

set(NX_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/nx)

install(
    TARGETS nx
    EXPORT nxConfig
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/nx DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT nxConfig NAMESPACE nx:: DESTINATION ${NX_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/nxConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/nxConfigVersion.cmake DESTINATION ${NX_CMAKE_DIR})

# Paths in nx.pc start from the file itself, so that an installed tree may be moved.
set(NX_FULL_PKGCONFIG_DIR ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH NX_PREFIX_FROM_PC ${NX_FULL_PKGCONFIG_DIR} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH NX_INCLUDE_FROM_PC ${NX_FULL_PKGCONFIG_DIR} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/nx.pc.in nx.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nx.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
