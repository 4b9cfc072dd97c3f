# The rules that every target of this project follows, so that no flag is set globally.

# Warnings, as errors; each flag is one that g++ 12 and clang 14 both know.
add_library(morvane_warnings INTERFACE)
target_compile_options(morvane_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
  -Wdouble-promotion -Wformat=2 -Werror)
# g++ 12 takes alternatives of a std::variant that are not the active one for uninitialised reads when it
# optimises; clang and the sanitizers watch for the real ones.
target_compile_options(morvane_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)

# Live stroke, redo and the searches must agree bit for bit, so no fused multiply-add.
add_library(morvane_numbers INTERFACE)
target_compile_options(morvane_numbers INTERFACE -ffp-contract=off)

add_library(morvane_sanitizers INTERFACE)
if(MORVANE_SANITIZE)
  target_compile_options(morvane_sanitizers INTERFACE
    -fsanitize=${MORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(morvane_sanitizers INTERFACE -fsanitize=${MORVANE_SANITIZE})
endif()

function(morvane_configure target standard)
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD ${standard} CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
  target_link_libraries(${target} PRIVATE morvane_warnings morvane_numbers morvane_sanitizers)
endfunction()
