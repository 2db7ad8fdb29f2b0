# The Debian packages: `cpack -G DEB` in a build tree makes one of each component of install.cmake. The preset
# `package` builds them as a distribution would: prefix /usr, the library in the directory of its architecture.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "The libolh authors")
set(CPACK_PACKAGE_CONTACT "The libolh authors <libolh@example.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # would become the first line of each package's description
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL libolh4 libolh-dev olh olh-doc)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/finish.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(this_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

# olh_package(COMPONENT SECTION SUMMARY DESCRIPTION): what every package says of itself.
macro(olh_package component section summary description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}")
endmacro()

olh_package(libolh4 libs "on-line help for host programs: the library"
  "A program's Help button calls one function: the library finds the manual along
a search path of documentation roots, and shows the topic in the user's browser
or PDF reader.")
set(CPACK_DEBIAN_LIBOLH4_PACKAGE_SUGGESTS olh)
set(CPACK_DEBIAN_LIBOLH4_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/symbols
    ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)

olh_package(libolh-dev libdevel "on-line help for host programs: headers and examples"
  "Headers for C and C++, the pkg-config file, the CMake package, libolh(3) and
examples in C, C++, Python and Tcl, for GTK, Qt and Tk.")
set(CPACK_DEBIAN_LIBOLH-DEV_PACKAGE_DEPENDS "libolh4 (= ${this_version})")
set(CPACK_DEBIAN_LIBOLH-DEV_PACKAGE_SUGGESTS "olh, olh-doc")

olh_package(olh doc "on-line help at a terminal, and in the viewers of today"
  "The command olh finds, shows and checks documentation; olh-browser and
olh-pdf-reader show it in the browser and PDF reader that a machine has, or as
text on a terminal; olh-serve serves it to browsers that cannot read files;
olh-import brings in manuals that Sphinx and other programs made;
olh-index makes the index that its pages are searched with;
olh-recorder tests a Help button without a display.")
set(CPACK_DEBIAN_OLH_PACKAGE_DEPENDS "libolh4 (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_OLH_PACKAGE_RECOMMENDS "olh-doc, poppler-utils, w3m")
set(CPACK_DEBIAN_OLH_PACKAGE_SUGGESTS "chromium | firefox-esr | www-browser, evince | pdf-viewer")
set(CPACK_DEBIAN_OLH_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/olh/conffiles)

olh_package(olh-doc doc "on-line help for host programs: the manual"
  "The manual of libolh and olh, laid out as a documentation root: pages, PDFs and
portals, and a model for a root of one's own.")
set(CPACK_DEBIAN_OLH-DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_OLH-DOC_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_OLH-DOC_PACKAGE_SUGGESTS "olh, python3, chromium")
set(CPACK_DEBIAN_OLH-DOC_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/olh-doc/conffiles)

include(CPack)
