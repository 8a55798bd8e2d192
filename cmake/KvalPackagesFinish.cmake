# What Debian's layout asks for and this version of cpack cannot say, or says wrong; cpack runs it over the packages
# that it has built (CPACK_PACKAGE_FILES), and takes what it leaves.

# Runs a command that must succeed.
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Packages of several architectures may be installed side by side: what is not in a folder of the architecture is the
# same in all.
function(add_multi_arch tree)
    file(READ ${tree}/DEBIAN/control control)
    string(REGEX REPLACE "(^|\n)(Architecture: [^\n]*\n)" "\\1\\2Multi-Arch: same\n" control "${control}")
    file(WRITE ${tree}/DEBIAN/control "${control}")
endfunction()

# The debug information has no papers of its own but those of its library, and is no program.
function(finish_debug_symbols tree)
    file(GLOB_RECURSE debug_files ${tree}/usr/lib/debug/*.debug)
    if(debug_files)
        file(CHMOD ${debug_files} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
        file(STRINGS ${tree}/DEBIAN/control package REGEX "^Package: ")
        string(REGEX REPLACE "^Package: (.*)-dbgsym$" "\\1" library "${package}")
        file(MAKE_DIRECTORY ${tree}/usr/share/doc)
        file(CREATE_LINK ${library} ${tree}/usr/share/doc/${library}-dbgsym SYMBOLIC)
    endif()
endfunction()

# cpack takes those of the debug information from a wrong folder.
function(write_md5sums tree)
    file(GLOB_RECURSE files RELATIVE ${tree} ${tree}/usr/*)
    set(md5sums "")
    foreach(file IN LISTS files)
        if(NOT IS_SYMLINK ${tree}/${file})
            file(MD5 ${tree}/${file} md5)
            string(APPEND md5sums "${md5}  ${file}\n")
        endif()
    endforeach()
    file(WRITE ${tree}/DEBIAN/md5sums "${md5sums}")
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(tree ${package}.tree)
    file(REMOVE_RECURSE ${tree})
    run(dpkg-deb --raw-extract ${package} ${tree})
    add_multi_arch(${tree})
    # The trigger runs ldconfig, once for all packages that are installed together.
    file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
    finish_debug_symbols(${tree})
    # Folders have the permissions of whoever runs cpack.
    run(find ${tree}/usr -type d -exec chmod 755 {} +)
    write_md5sums(${tree})
    run(dpkg-deb --root-owner-group -Zxz --build ${tree} ${package})
    file(REMOVE_RECURSE ${tree})
endforeach()
