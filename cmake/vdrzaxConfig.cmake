include(${CMAKE_CURRENT_LIST_DIR}/vdrzaxTargets.cmake)
# Where the archive alone is installed, it serves by both names.
if(NOT TARGET vdrzax::vdrzax)
  add_library(vdrzax::vdrzax ALIAS vdrzax::vdrzax_static)
endif()
