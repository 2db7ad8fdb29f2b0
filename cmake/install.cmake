# What an installation holds, in the four parts that Debian would make of it; each is a component of `cmake --install`
# and a package of `cpack -G DEB` (packages.cmake):
#   libolh4     the library, for programs that were linked with it
#   libolh-dev  headers, pkg-config file, CMake package, libolh(3) and the examples, for those who write hosts
#   olh         the command, the viewers behind it, their pages and completions, the defaults of a session
#   olh-doc     the documentation root, and what makes it known to a session
# Every path is below the prefix, and no file names it but those that make the root known to a session: the installed
# tree can be moved.
include(CMakePackageConfigHelpers)

set(OLH_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/olh)

install(TARGETS olh EXPORT olh-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libolh4 NAMELINK_COMPONENT libolh-dev)

install(DIRECTORY include/olh DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT libolh-dev
        FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(EXPORT olh-targets NAMESPACE olh:: DESTINATION ${OLH_CMAKE_DIR} COMPONENT libolh-dev)
configure_package_config_file(cmake/olh-config.cmake.in ${PROJECT_BINARY_DIR}/olh-config.cmake
                              INSTALL_DESTINATION ${OLH_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/olh-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/olh-config.cmake ${PROJECT_BINARY_DIR}/olh-config-version.cmake
        DESTINATION ${OLH_CMAKE_DIR} COMPONENT libolh-dev)

# The pkg-config file finds its prefix from where it lies.
file(RELATIVE_PATH OLH_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/olh.pc.in ${PROJECT_BINARY_DIR}/olh.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/olh.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT libolh-dev)

install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libolh-dev/examples COMPONENT libolh-dev
        PATTERN "__pycache__" EXCLUDE)

# olh_install_pages(COMPONENT PAGES...): manual pages, each into the section that its name ends with.
function(olh_install_pages component)
  foreach(page IN LISTS ARGN)
    string(REGEX MATCH "[0-9]$" section ${page})
    install(FILES share/man/${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
  endforeach()
endfunction()
olh_install_pages(libolh-dev libolh.3)
olh_install_pages(olh olh.1 olh-browser.1 olh-import.1 olh-index.1 olh-pdf-reader.1 olh-recorder.1 olh_documentation_root.5
                  olh_environment.7 olh_trace_log.5 qel_doc_options.ini.5 qel_viewer_config.ini.5)
if(TARGET olh-serve)
  olh_install_pages(olh olh-serve.1)
endif()

# The viewers of a session. CMAKE_INSTALL_SYSCONFDIR is "etc" below the prefix; a package gives it as /etc.
install(FILES share/environment/60-olh.conf DESTINATION lib/environment.d COMPONENT olh)
install(FILES share/environment/olh.sh DESTINATION ${CMAKE_INSTALL_SYSCONFDIR}/profile.d COMPONENT olh)

# The documentation root of a session, below the prefix that "cmake --install" is given. A package is installed elsewhere
# while it is made: debian/finish.cmake names its root.
install(CODE "
  cmake_path(APPEND CMAKE_INSTALL_PREFIX ${CMAKE_INSTALL_DATADIR}/olh/docs OUTPUT_VARIABLE OLH_DOC_ROOT)
  foreach(file 60-olh-doc.conf olh-doc.sh)
    configure_file(${PROJECT_SOURCE_DIR}/share/environment/\${file}.in ${PROJECT_BINARY_DIR}/\${file} @ONLY)
  endforeach()" COMPONENT olh-doc)
install(FILES ${PROJECT_BINARY_DIR}/60-olh-doc.conf DESTINATION lib/environment.d COMPONENT olh-doc)
install(FILES ${PROJECT_BINARY_DIR}/olh-doc.sh DESTINATION ${CMAKE_INSTALL_SYSCONFDIR}/profile.d COMPONENT olh-doc)

# Fish does not read what other login shells do.
install(FILES share/environment/olh.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_conf.d COMPONENT olh)
install(FILES share/environment/olh-doc.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_conf.d COMPONENT olh-doc)

# The completions of three shells, each in the folder where that shell looks; they ask the first file.
install(PROGRAMS share/completions/candidates.sh DESTINATION ${CMAKE_INSTALL_DATADIR}/olh COMPONENT olh)
install(FILES share/completions/olh.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME olh
        COMPONENT olh)
install(FILES share/completions/_olh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT olh)
install(FILES share/completions/olh.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT olh)
