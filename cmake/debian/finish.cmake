# Run by CPack between installing and packing: makes each package's tree the way Debian's rules want it.
#   /usr/etc        goes to /etc, where shells look
#   session files   name the root where the package puts it
#   manual pages    are compressed, without a name or time in them
#   /usr/share/doc/PACKAGE gets the copyright and the change logs, ours and Debian's
set(source ${CMAKE_CURRENT_LIST_DIR}/../..)
set(OLH_DOC_ROOT /usr/share/olh/docs)
foreach(file 60-olh-doc.conf olh-doc.sh)
  file(GLOB_RECURSE installed ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/olh-doc/${file})
  configure_file(${source}/share/environment/${file}.in ${installed} @ONLY)
endforeach()
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
foreach(package IN LISTS CPACK_COMPONENTS_ALL)
  set(tree ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${package})
  if(EXISTS ${tree}/usr/etc)
    file(RENAME ${tree}/usr/etc ${tree}/etc)
  endif()
  file(GLOB pages ${tree}/usr/share/man/man*/*.[0-9])
  if(pages)
    execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
  endif()
  set(notices ${tree}/usr/share/doc/${package})
  configure_file(${source}/LICENSE ${notices}/copyright COPYONLY)
  configure_file(${source}/CHANGELOG.md ${notices}/changelog COPYONLY)
  file(WRITE ${notices}/changelog.Debian
       "libolh (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
       "  * Packages of this version; changelog.gz tells what is new in it.\n\n"
       " -- ${CPACK_PACKAGE_CONTACT}  ${now}\n")
  execute_process(COMMAND gzip -9n ${notices}/changelog ${notices}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
endforeach()
