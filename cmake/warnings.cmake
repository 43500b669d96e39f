# One warning policy for g++, clang and mingw-w64: everything reasonable, and fatal.
function(kiv_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -Wshadow -Wno-unused-parameter)
endfunction()
