# How what ships is hardened: the library and the tools link vdrzax_hardening.
include(CheckPIESupported)
check_pie_supported()

add_library(vdrzax_hardening INTERFACE)
set_target_properties(vdrzax_hardening PROPERTIES INTERFACE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(vdrzax_hardening INTERFACE -fstack-protector-strong)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  target_compile_options(vdrzax_hardening INTERFACE -fcf-protection)
endif()
target_link_options(vdrzax_hardening INTERFACE
  LINKER:-z,relro
  LINKER:-z,now
  LINKER:-z,noexecstack
)

# The tools are fortified as well, where the optimiser sees the sizes that this takes. Sanitizers
# see more without.
add_library(vdrzax_tool_hardening INTERFACE)
target_link_libraries(vdrzax_tool_hardening INTERFACE vdrzax_hardening)
if(NOT VDRZAX_SANITIZE)
  target_compile_options(vdrzax_tool_hardening INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
endif()
