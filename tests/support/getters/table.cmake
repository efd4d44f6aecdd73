# The table of getters, for tests, fuzzers and measurements: it needs no test framework.
include_guard(GLOBAL)

# One line a family, from the names of the public headers.
set(family_lines "")
foreach(family IN LISTS families)
  string(SUBSTRING ${family} 0 1 initial)
  string(TOUPPER ${initial} initial)
  string(SUBSTRING ${family} 1 -1 rest)
  string(APPEND family_lines " \\\n  use(${initial}${rest})")
endforeach()
set(getter_families ${PROJECT_BINARY_DIR}/getter_families)
file(CONFIGURE OUTPUT ${getter_families}/getter_families.h
     CONTENT "#pragma once\n\n#define FOR_EACH_FAMILY(use)@family_lines@\n" @ONLY)

file(GLOB getter_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
add_library(getter_table OBJECT ${getter_sources})
target_include_directories(getter_table PUBLIC ${PROJECT_SOURCE_DIR}/tests ${getter_families}
                                               ${PROJECT_SOURCE_DIR}/include)
target_link_libraries(getter_table PRIVATE vdrzax_warnings)
target_compile_options(getter_table PRIVATE -O0 -g1)
if(VDRZAX_SANITIZE MATCHES "fuzzer-no-link")
  # What is covered is the code under test.
  target_compile_options(getter_table PRIVATE -fno-sanitize=fuzzer-no-link)
endif()
