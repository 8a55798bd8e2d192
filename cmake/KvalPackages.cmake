# Debian packages by cpack: libkval2 (component runtime), libkval-dev (component development) and libkval2-dbgsym (the
# debug information that is cut off the library). packaging/debian has the texts that go into them.
if(NOT KVAL_INSTALL OR NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    message(FATAL_ERROR "Debian packages need KVAL_INSTALL and CMAKE_INSTALL_PREFIX=/usr, as in the preset package")
endif()

set(KVAL_DEBIAN_MAINTAINER "kval maintainers <maintainers@kval.invalid>" CACHE STRING
    "Who answers for the Debian packages: a placeholder until someone publishes them")

set(debian_dir ${PROJECT_SOURCE_DIR}/packaging/debian)
set(debian_build_dir ${PROJECT_BINARY_DIR}/debian)
set(debian_revision 1)
set(debian_version ${PROJECT_VERSION}-${debian_revision})
get_target_property(soversion kval SOVERSION)

# Debian's changelog has the build's date; with SOURCE_DATE_EPOCH set, that one.
string(TIMESTAMP debian_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${debian_dir}/changelog.in ${debian_build_dir}/changelog.Debian @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${debian_build_dir}/changelog COPYONLY)
foreach(text IN ITEMS changelog.Debian changelog)
    execute_process(COMMAND gzip -9nc ${debian_build_dir}/${text} OUTPUT_FILE ${debian_build_dir}/${text}.gz
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
set(papers ${debian_dir}/copyright ${debian_build_dir}/changelog.Debian.gz ${debian_build_dir}/changelog.gz)
install(FILES ${papers} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libkval${soversion} COMPONENT runtime)
install(FILES ${papers} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libkval-dev COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kval)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package's description begins with its own
foreach(component IN ITEMS runtime development)
    file(READ ${debian_dir}/description.${component} description)
    string(TOUPPER ${component} component)
    string(STRIP "${description}" CPACK_DEBIAN_${component}_DESCRIPTION)
endforeach()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE kval)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${KVAL_DEBIAN_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_RELEASE ${debian_revision})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkval${soversion})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian_dir}/triggers)
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
# A program runs with the version it was built with, and with later ones.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkval-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libkval${soversion} (= ${debian_version})")

set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/KvalPackagesFinish.cmake)
include(CPack)
