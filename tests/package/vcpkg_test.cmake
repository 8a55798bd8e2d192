# Tests the vcpkg port with stand-ins for vcpkg's functions, which install the project's own build for both of the
# builds that vcpkg makes. ctest sets the environment: SOURCE and BUILD are the project's directories, WORK is a folder
# to work in.
cmake_minimum_required(VERSION 3.25)

set(PORT kval)
set(CURRENT_PACKAGES_DIR $ENV{WORK}/packages)
file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR})

# expect(<condition>...): ends the test where the condition is not met.
macro(expect)
    if(NOT (${ARGN}))
        message(FATAL_ERROR "not so: ${ARGN}")
    endif()
endmacro()

function(vcpkg_check_linkage linkage)
    expect(linkage STREQUAL "ONLY_DYNAMIC_LIBRARY")
endfunction()

function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
    expect(arg_SOURCE_PATH STREQUAL "$ENV{SOURCE}")
    foreach(option IN LISTS arg_OPTIONS)
        string(REGEX MATCH "^-D([A-Z_]+)=O(N|FF)$" is_option "${option}")
        expect(is_option)
        file(STRINGS $ENV{BUILD}/CMakeCache.txt known REGEX "^${CMAKE_MATCH_1}:BOOL=")
        expect(known)
    endforeach()
endfunction()

function(vcpkg_cmake_install)
    foreach(prefix IN ITEMS ${CURRENT_PACKAGES_DIR} ${CURRENT_PACKAGES_DIR}/debug)
        execute_process(COMMAND ${CMAKE_COMMAND} --install $ENV{BUILD} --prefix ${prefix}
            OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endfunction()

function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "CONFIG_PATH" "")
    foreach(prefix IN ITEMS ${CURRENT_PACKAGES_DIR} ${CURRENT_PACKAGES_DIR}/debug)
        expect(EXISTS ${prefix}/${arg_CONFIG_PATH}/kvalConfig.cmake)
        file(MAKE_DIRECTORY ${prefix}/share)
        file(RENAME ${prefix}/${arg_CONFIG_PATH} ${prefix}/share/${PORT})
        file(REMOVE_RECURSE ${prefix}/lib/cmake)
    endforeach()
endfunction()

function(vcpkg_fixup_pkgconfig)
    expect(EXISTS ${CURRENT_PACKAGES_DIR}/lib/pkgconfig/kval.pc)
endfunction()

function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
    expect(EXISTS ${arg_FILE_LIST})
    file(COPY_FILE ${arg_FILE_LIST} ${CURRENT_PACKAGES_DIR}/share/${PORT}/copyright)
endfunction()

include($ENV{SOURCE}/packaging/vcpkg/ports/kval/portfile.cmake)

# What vcpkg complains of in a package: headers or shared files of the debug build, and a missing copyright.
file(GLOB folders RELATIVE ${CURRENT_PACKAGES_DIR} ${CURRENT_PACKAGES_DIR}/* ${CURRENT_PACKAGES_DIR}/debug/*)
list(JOIN folders " " folders)
expect(folders STREQUAL "debug debug/lib include lib share")
file(GLOB papers RELATIVE ${CURRENT_PACKAGES_DIR}/share/kval ${CURRENT_PACKAGES_DIR}/share/kval/*)
list(FILTER papers EXCLUDE REGEX "\\.cmake$")
list(JOIN papers " " papers)
expect(papers STREQUAL "copyright usage")
