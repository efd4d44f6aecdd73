# How what ships is built: hardened, and the same bytes wherever the tree lies. The library and the
# tools link vdrzax_hardening.
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
# Debug builds keep their paths, by which a debugger finds the sources.
target_compile_options(vdrzax_hardening INTERFACE
  $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>
  $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${CMAKE_BINARY_DIR}=build>)

# The tools are fortified as well; in the library that is left to the builder's flags. Sanitizers see
# more without.
add_library(vdrzax_tool_hardening INTERFACE)
target_link_libraries(vdrzax_tool_hardening INTERFACE vdrzax_hardening)
if(NOT VDRZAX_SANITIZE)
  target_compile_options(vdrzax_tool_hardening INTERFACE
    "SHELL:-include \"${CMAKE_CURRENT_LIST_DIR}/fortify.h\"")
endif()
if(VDRZAX_TOOLS)
  include(CheckPIESupported)
  check_pie_supported()
endif()
