# What users run is built so that a fault of memory is hard to make use of: the stack and the lengths
# that the C library is given are watched, the program lies at another place each time, tables of
# addresses cannot be written. tools/check-hardening looks whether it is so. Not together with the
# sanitizers, which watch more.
if(STILLPOST_SANITIZE)
  return()
endif()
set(hardened "$<NOT:$<CONFIG:Debug>>")
if(WIN32)
  target_link_options(stillpost_flags INTERFACE
    "$<${hardened}:-Wl,--dynamicbase,--high-entropy-va,--nxcompat>")
  return()
endif()
include(CheckCXXCompilerFlag)
# Jumps end only where a jump is meant to: Intel's and AMD's way, and that of ARM.
foreach(option -fstack-protector-strong -fstack-clash-protection -fcf-protection
    -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "STILLPOST_HAS${option}" known)
  check_cxx_compiler_flag(${option} ${known})
  if(${known})
    target_compile_options(stillpost_flags INTERFACE "$<${hardened}:${option}>")
  endif()
endforeach()
# Some systems set a lower level by themselves.
target_compile_options(stillpost_flags INTERFACE
  "$<${hardened}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")
target_link_options(stillpost_flags INTERFACE
  "$<${hardened}:-pie;-Wl,-z,relro,-z,now,-z,noexecstack>")
