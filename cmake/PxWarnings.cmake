# Warnings for the project's own code; third-party headers come in as system includes.
add_library(px_warnings INTERFACE)
target_compile_options(px_warnings INTERFACE
    -Wall -Wextra -Wshadow -Wimplicit-fallthrough -Werror
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wno-gnu-statement-expression>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(px_warnings INTERFACE -Wno-unknown-warning-option)
    # GCC 12's optimiser reports these from inlined library code where nothing is wrong
    # (std::string appends at -O3); keep them visible, not fatal.
    target_compile_options(px_warnings INTERFACE -Wno-error=maybe-uninitialized
        -Wno-error=restrict -Wno-error=stringop-overflow -Wno-error=array-bounds)
endif()
