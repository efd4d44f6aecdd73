# The manual pages and the HTML reference, made from the headers, the pages under docs/ and what the
# tools say of themselves; and what completes the command lines of vdrctl in shells.
find_program(VDRZAX_LOWDOWN lowdown)
mark_as_advanced(VDRZAX_LOWDOWN)
if(NOT VDRZAX_PYTHON OR NOT VDRZAX_LOWDOWN)
  message(FATAL_ERROR "The manual pages need python3 and lowdown; install both, or leave the pages out "
                      "by -DVDRZAX_MANUAL=OFF")
endif()

# Tools that are built for another machine can't tell of themselves.
set(manual_tools "")
if(VDRZAX_TOOLS AND CMAKE_CROSSCOMPILING)
  message(STATUS "The tools can't run here, so their manual pages and completions are not made")
elseif(VDRZAX_TOOLS)
  set(manual_tools $<TARGET_FILE:vdrctl> $<TARGET_FILE:vdrsim>)
endif()

set(manual_dir ${PROJECT_BINARY_DIR}/manual)
file(GLOB manual_sources CONFIGURE_DEPENDS scripts/manual/*.py docs/*.md
     tools/memcheck/vdrzax-memcheck.in)
set(make_pages ${VDRZAX_PYTHON} -B ${PROJECT_SOURCE_DIR}/scripts/manual/make.py)
set(completions "")
if(manual_tools)
  set(completions COMMAND ${make_pages} completions ${PROJECT_SOURCE_DIR} ${manual_dir}/completions
                          ${manual_tools})
endif()
add_custom_command(OUTPUT ${manual_dir}/made
  COMMAND ${make_pages} man ${PROJECT_SOURCE_DIR} ${manual_dir}/man ${manual_tools}
  COMMAND ${make_pages} html ${PROJECT_SOURCE_DIR} ${manual_dir}/html
  ${completions}
  COMMAND ${CMAKE_COMMAND} -E touch ${manual_dir}/made
  DEPENDS ${manual_sources} ${headers} include/vdrzax.h scripts/public_header.py ${manual_tools}
  COMMENT "Making the manual"
  VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual_dir}/made)

if(VDRZAX_INSTALL)
  include(GNUInstallDirs)
  install(DIRECTORY ${manual_dir}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR})
  install(DIRECTORY ${manual_dir}/html DESTINATION ${CMAKE_INSTALL_DOCDIR})
  if(manual_tools)
    install(DIRECTORY ${manual_dir}/completions/ DESTINATION ${CMAKE_INSTALL_DATADIR})
  endif()
endif()
