# The Debian packages, made by CPack from the install components (see PxInstall.cmake):
#   pxmenu            the programs, the image module, data, catalogues, desktop files, manual page
#   pxmenu-<host>     one per file-manager plugin built, depending on pxmenu of the same version
# Included last, once every target exists. scripts/build-packages.sh runs it.

# The extension process and the settings application belong to the main package when built,
# with their manual pages.
foreach(program pxmenu-extension pxmenu-settings)
    string(REPLACE "-" "_" underscored ${program})
    foreach(target IN ITEMS ${program} ${underscored})
        if(TARGET ${target})
            px_install_program(${target})
            install(FILES ${CMAKE_BINARY_DIR}/man/${program}.1.gz
                DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT pxmenu)
        endif()
    endforeach()
endforeach()

set(PX_PACKAGE_MAINTAINER "pxmenu developers <maintainers@pxmenu.org>" CACHE STRING
    "The Maintainer field of the Debian packages")
set(PX_PACKAGE_REVISION 1 CACHE STRING "The Debian revision of the packages")

# Every package carries the copyright file and the changelog in share/doc/<package>/.
find_program(GZIP gzip REQUIRED)
execute_process(COMMAND date -u -R -d "${PX_RELEASE_DATE} 12:00"
    OUTPUT_VARIABLE PX_CHANGELOG_TIME OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(PX_PACKAGE_DOCS ${CMAKE_BINARY_DIR}/package-docs)
configure_file(${CMAKE_SOURCE_DIR}/cmake/debian/changelog.in ${PX_PACKAGE_DOCS}/changelog.Debian @ONLY)
execute_process(COMMAND ${GZIP} -9nf ${PX_PACKAGE_DOCS}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
function(_px_package_docs package)
    install(FILES ${PX_PACKAGE_DOCS}/changelog.Debian.gz ${CMAKE_SOURCE_DIR}/cmake/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${package})
endfunction()

get_property(PX_PLUGIN_HOSTS GLOBAL PROPERTY PX_PLUGIN_HOSTS)
set(CPACK_COMPONENTS_ALL pxmenu)
_px_package_docs(pxmenu)
foreach(host IN LISTS PX_PLUGIN_HOSTS)
    list(APPEND CPACK_COMPONENTS_ALL pxmenu-${host})
    _px_package_docs(pxmenu-${host})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pxmenu)
set(CPACK_PACKAGE_VENDOR "pxmenu developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package's description starts with its own summary line; an empty project summary keeps
# CPack from putting one line for all in front.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${PX_PACKAGE_REVISION})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${PX_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
# Files the packages install: 0755 folders, whatever the umask of the build.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_PXMENU_PACKAGE_NAME pxmenu)
set(CPACK_COMPONENT_PXMENU_DESCRIPTION "configurable context menu for file managers
pxmenu adds a context menu of its own to the file managers: new files from
templates, copy and move to favourite folders, open with chosen applications or
in a terminal, image and PDF conversion, compression, checksums, hidden and
locked files, folder icons and more. Every entry can be switched on or off,
renamed and reordered in the settings application.
.
This package holds the pxmenu command, which builds the menu and carries out
its commands from the command line as well, the extension process that shows
the windows, the settings application and the shared data. Install the package
for your file manager as well (pxmenu-nautilus, pxmenu-nemo, pxmenu-caja,
pxmenu-thunar or pxmenu-dolphin).")

set(_px_host_names "GNOME Files (Nautilus)" Nemo Caja Thunar "Dolphin (KDE)")
set(_px_host_packages nautilus nemo caja thunar dolphin)
foreach(host IN LISTS PX_PLUGIN_HOSTS)
    string(TOUPPER pxmenu-${host} upper)
    list(FIND _px_host_packages ${host} index)
    list(GET _px_host_names ${index} name)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME pxmenu-${host})
    set(CPACK_COMPONENT_${upper}_DEPENDS pxmenu)
    set(CPACK_DEBIAN_${upper}_PACKAGE_ENHANCES ${host})
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "pxmenu context menu for ${name}
This package adds the pxmenu context menu to ${name}.
Restart the file manager after installing it; the menu's entries are chosen
in the pxmenu settings application.")
endforeach()

include(CPack)
