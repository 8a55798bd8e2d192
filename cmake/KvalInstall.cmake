# Installs the library, its headers and the two packages by which others find it: CMake's and pkg-config's.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kval)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS kval EXPORT kval INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

# kval depends on no other package, so the exported target is the whole configuration.
install(EXPORT kval FILE kvalConfig.cmake NAMESPACE kval:: DESTINATION ${package_dir})

# While the major version is 0, a new minor version may break callers.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kvalConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kvalConfigVersion.cmake DESTINATION ${package_dir})

# The prefix is found from the place of kval.pc itself, so that an installed tree may be moved.
cmake_path(ABSOLUTE_PATH pkgconfig_dir BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE pc_prefix)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${pc_prefix} OUTPUT_VARIABLE pc_prefix)
cmake_path(APPEND pc_libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/kval.pc.in ${PROJECT_BINARY_DIR}/kval.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kval.pc DESTINATION ${pkgconfig_dir})
