# The warnings of the project's own targets; a project that includes kval keeps its own.

function(kval_warnings target)
    # clang's -Wconversion includes sign conversions, which only the library's own sources are held to.
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wconversion -Wno-sign-conversion -Wshadow -Wold-style-cast)
    if(KVAL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
