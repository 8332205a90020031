# Warnings for the project's own code; third-party headers come in as system includes.
add_library(px_warnings INTERFACE)
target_compile_options(px_warnings INTERFACE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    -Wno-gnu-statement-expression -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(px_warnings INTERFACE -Wno-unknown-warning-option)
    target_compile_options(px_warnings INTERFACE -Wno-error=maybe-uninitialized)
endif()
