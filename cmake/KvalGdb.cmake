# The pretty-printer, where gdb loads it by itself together with the library: it looks for the library's own file name
# with "-gdb.py" behind, beside the library and, below that path, in its folder of scripts. It runs only scripts in
# places that it trusts: for the system's library that is this folder; everybody else's is trusted by its user
# (docs/debugging.md).
include(GNUInstallDirs)

set(gdb_printer ${PROJECT_SOURCE_DIR}/tools/gdb/kval.py)
file(GENERATE OUTPUT $<TARGET_FILE:kval>-gdb.py INPUT ${gdb_printer})

if(KVAL_INSTALL)
    set(gdb_dir ${CMAKE_INSTALL_LIBDIR})
    if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        set(gdb_dir ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR})
    endif()
    install(FILES ${gdb_printer} DESTINATION ${gdb_dir}
        RENAME $<TARGET_FILE_NAME:kval>-gdb.py COMPONENT runtime)
endif()
