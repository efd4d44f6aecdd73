# Headers, both libraries, and what pkg-config and find_package(vdrzax) need.
include(CMakePackageConfigHelpers)

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS vdrzax vdrzax_static EXPORT vdrzax)
install(EXPORT vdrzax FILE vdrzaxConfig.cmake NAMESPACE vdrzax::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vdrzax)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vdrzaxConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vdrzaxConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vdrzax)

# The file finds its prefix from where it lies, so that an installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/vdrzax.pc.in ${PROJECT_BINARY_DIR}/vdrzax.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vdrzax.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
