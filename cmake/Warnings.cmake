# Our own targets build warning-free with these; third-party code is not touched.
function(nv_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                           -Wno-sign-conversion)
endfunction()
