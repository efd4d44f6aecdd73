# Headers, libraries and tools, and what pkg-config and find_package(vdrzax) need.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS ${asked_libraries} EXPORT vdrzax
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vdrzax)
install(EXPORT vdrzax FILE vdrzaxTargets.cmake NAMESPACE vdrzax:: DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vdrzaxConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES cmake/vdrzaxConfig.cmake ${PROJECT_BINARY_DIR}/vdrzaxConfigVersion.cmake
        DESTINATION ${package_dir})

# The files find their prefix from where they lie, so that an installed tree can be moved; but not
# when the libraries have a place of their own.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
  set(run_path ${CMAKE_INSTALL_LIBDIR})
else()
  file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  set(pc_prefix \${pcfiledir}/${up})
  file(RELATIVE_PATH across ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set(run_path \$ORIGIN/${across})
endif()
# An absolute directory takes the place of the prefix.
cmake_path(APPEND pc_libdir \${prefix} ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir \${prefix} ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(cmake/vdrzax.pc.in ${PROJECT_BINARY_DIR}/vdrzax.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vdrzax.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(VDRZAX_TOOLS)
  set_target_properties(vdrctl PROPERTIES INSTALL_RPATH ${run_path})
  install(TARGETS vdrctl vdrsim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

  # From where the program lies to what it needs, so that an installed tree can be moved.
  set(memcheck_directory ${CMAKE_INSTALL_FULL_DATADIR}/vdrzax/memcheck)
  file(RELATIVE_PATH memcheck_files ${CMAKE_INSTALL_FULL_BINDIR} ${memcheck_directory})
  configure_file(tools/memcheck/vdrzax-memcheck.in ${PROJECT_BINARY_DIR}/vdrzax-memcheck @ONLY)
  install(PROGRAMS ${PROJECT_BINARY_DIR}/vdrzax-memcheck DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES tools/memcheck/device.c tools/memcheck/memcheck.supp
          DESTINATION ${CMAKE_INSTALL_DATADIR}/vdrzax/memcheck)
endif()
