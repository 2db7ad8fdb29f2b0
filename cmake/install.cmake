# What an installation holds for a host developer: headers, library, pkg-config file, CMake package.
include(CMakePackageConfigHelpers)

install(TARGETS olh EXPORT olh-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/olh DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(EXPORT olh-targets NAMESPACE olh:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/olh)

configure_package_config_file(cmake/olh-config.cmake.in ${PROJECT_BINARY_DIR}/olh-config.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/olh)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/olh-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/olh-config.cmake ${PROJECT_BINARY_DIR}/olh-config-version.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/olh)

# The pkg-config file finds its prefix from where it lies, so that the installed tree can be moved.
file(RELATIVE_PATH OLH_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/olh.pc.in ${PROJECT_BINARY_DIR}/olh.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/olh.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
