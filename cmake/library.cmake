# libvdrzax.so.1 and libvdrzax.a, made from the same sources.

# How each source of the library is compiled.
add_library(vdrzax_code INTERFACE)
target_link_libraries(vdrzax_code INTERFACE vdrzax_warnings vdrzax_hardening)
target_compile_options(vdrzax_code INTERFACE
  # No C++ run-time: the shared object needs libc alone, and a C program links the archive with cc.
  -fno-exceptions -fno-rtti -fno-threadsafe-statics
  # Agents' tools count and fail these calls, so each must happen as it is written.
  -fno-builtin-malloc -fno-builtin-calloc -fno-builtin-free
  # All symbols are bound when the library is loaded, so a call needs no stub on its way.
  -fno-plt
)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # A name that is unique in a process would keep a program that links the archive from its own.
  target_compile_options(vdrzax_code INTERFACE -fno-gnu-unique)
endif()
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # gcc would clear and copy blocks by string instructions, which take long to start.
  target_compile_options(vdrzax_code INTERFACE
    -mmemset-strategy=libcall:-1:noalign -mmemcpy-strategy=libcall:-1:noalign)
endif()

# The version script names every function that the public headers mark, and nothing else.
file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/vdrzax/*.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${headers})
# A family is a public header and the folder of its name.
set(families "")
set(exports "")
foreach(header IN LISTS headers)
  cmake_path(GET header STEM family)
  if(NOT family STREQUAL "channel")
    list(APPEND families ${family})
  endif()
  file(STRINGS ${header} declarations REGEX "^VDRZAX_API ")
  foreach(declaration IN LISTS declarations)
    string(REGEX MATCH "(VDRZAX[A-Za-z0-9_]+)\\(" matched "${declaration}")
    if(NOT matched)
      message(FATAL_ERROR "${header}: no function name on the line of VDRZAX_API: ${declaration}")
    endif()
    list(APPEND exports "${CMAKE_MATCH_1}")
  endforeach()
endforeach()
list(SORT exports)
set(export_lines "")
foreach(name IN LISTS exports)
  string(APPEND export_lines "    ${name};\n")
endforeach()
set(version_script ${PROJECT_BINARY_DIR}/libvdrzax.map)
file(CONFIGURE OUTPUT ${version_script}
     CONTENT "VDRZAX_1 {\n  global:\n@export_lines@  local:\n    *;\n};\n" @ONLY)

# Linked with cc: nothing of the C++ run-time is offered to the linker.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
# The road to the kernel, and one folder a family.
file(GLOB library_sources CONFIGURE_DEPENDS library/*/*.cpp)
add_library(vdrzax SHARED ${library_sources})
add_library(vdrzax_static STATIC ${library_sources})
set_target_properties(vdrzax vdrzax_static PROPERTIES
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  LINKER_LANGUAGE C
  OUTPUT_NAME vdrzax
  POSITION_INDEPENDENT_CODE ON
  EXCLUDE_FROM_ALL ON
)
foreach(target vdrzax vdrzax_static)
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    PRIVATE ${PROJECT_SOURCE_DIR}/library)
  # What NULL does can be observed, so the compiler must not reckon with its absence.
  target_compile_definitions(${target} PRIVATE VDRZAX_NO_HINTS)
  target_compile_options(${target} PRIVATE
    $<TARGET_PROPERTY:vdrzax_code,INTERFACE_COMPILE_OPTIONS>)
endforeach()
set_target_properties(vdrzax PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION 1
  LINK_DEPENDS ${version_script}
)
# The shared object alone: what links the archive keeps the options of its own.
target_link_libraries(vdrzax PRIVATE vdrzax_hardening)
target_link_options(vdrzax PRIVATE
  LINKER:--version-script=${version_script}
  LINKER:--as-needed
  LINKER:-Bsymbolic-functions
)
if(NOT VDRZAX_SANITIZE)
  target_link_options(vdrzax PRIVATE LINKER:-z,defs)
endif()
# The archive exports nothing: a plugin that links it would offer our functions as its own.
target_compile_definitions(vdrzax_static PRIVATE VDRZAX_API=)

# What is built and installed: both libraries, or the one that BUILD_SHARED_LIBS asks for. As part of
# another project each is built when something links it.
set(asked_libraries vdrzax vdrzax_static)
add_library(vdrzax::vdrzax_static ALIAS vdrzax_static)
if(NOT DEFINED BUILD_SHARED_LIBS)
  add_library(vdrzax::vdrzax ALIAS vdrzax)
elseif(BUILD_SHARED_LIBS)
  set(asked_libraries vdrzax)
  add_library(vdrzax::vdrzax ALIAS vdrzax)
else()
  set(asked_libraries vdrzax_static)
  add_library(vdrzax::vdrzax ALIAS vdrzax_static)
endif()
if(PROJECT_IS_TOP_LEVEL OR VDRZAX_INSTALL)
  set_target_properties(${asked_libraries} PROPERTIES EXCLUDE_FROM_ALL OFF)
endif()

# The layouts of the records, for the tools: vdrctl prints from them, vdrsim fills replies by them.
add_library(vdrzax_layouts INTERFACE)
target_include_directories(vdrzax_layouts INTERFACE ${PROJECT_SOURCE_DIR}/library
                                                    ${PROJECT_SOURCE_DIR}/include)
