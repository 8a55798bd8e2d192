# Installs the library, its headers and the two packages by which others find it: CMake's and pkg-config's. Component
# runtime is what a program needs to run, development what it takes to build one.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kval)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS kval EXPORT kval
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h")

# kval depends on no other package, so the exported target is the whole configuration.
install(EXPORT kval FILE kvalConfig.cmake NAMESPACE kval:: DESTINATION ${package_dir} COMPONENT development)

# While the major version is 0, a new minor version may break callers.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kvalConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kvalConfigVersion.cmake DESTINATION ${package_dir} COMPONENT development)

# The prefix is found from the place of kval.pc itself, so that an installed tree may be moved. The system's own tree is
# not, and pkg-config leaves its folders out of its answer where it knows them by name.
cmake_path(ABSOLUTE_PATH pkgconfig_dir BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE pc_way_up)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${pc_way_up} OUTPUT_VARIABLE pc_way_up)
cmake_path(APPEND pc_prefix "\${pcfiledir}" ${pc_way_up})
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(pc_prefix /usr)
endif()
cmake_path(APPEND pc_libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(${CMAKE_CURRENT_LIST_DIR}/kval.pc.in ${PROJECT_BINARY_DIR}/kval.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kval.pc DESTINATION ${pkgconfig_dir} COMPONENT development)
