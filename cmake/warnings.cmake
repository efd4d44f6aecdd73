# Every target of this project links vdrzax_warnings.
add_library(vdrzax_warnings INTERFACE)
target_compile_options(vdrzax_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${VDRZAX_WERROR}>:-Werror>)
