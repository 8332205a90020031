# The installed layout and the components the Debian packages are made of.
#
# Component `pxmenu` (package pxmenu): the programs, the image module, the data, the catalogues,
# the desktop integration, the manual page and the completion. One component per file-manager
# plugin (package pxmenu-<host>), which depends on pxmenu; it exists only when a plugin target
# calls px_install_plugin.

# The image module's folder under the prefix (lib/<multiarch>/pxmenu for /usr on Debian). Programs
# look for it there relative to their own location (<prefix>/bin/..) first.
set(PX_MODULE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/pxmenu)

# Everything the packages hold; scripts/build-packages.sh builds only this.
add_custom_target(px_packaged)

# Installs a program of the main package into bin/ and adds it to px_packaged.
function(px_install_program target)
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT pxmenu)
    add_dependencies(px_packaged ${target})
endfunction()

# The extension folder a host's pkg-config file names, as a destination for install(): relative
# to the install prefix when the folder lies under the prefix of the host's own installation
# (so that a /usr install lands exactly there and a /usr/local one beside it), absolute otherwise.
function(_px_host_extension_dir module variable out)
    pkg_get_variable(folder ${module} ${variable})
    pkg_get_variable(prefix ${module} prefix)
    if(NOT folder)
        set(${out} "" PARENT_SCOPE)
        return()
    endif()
    if(prefix AND folder MATCHES "^${prefix}/(.+)$")
        set(folder ${CMAKE_MATCH_1})
    endif()
    set(${out} ${folder} PARENT_SCOPE)
endfunction()

# Contract for the file-manager plugins:
#
#   px_install_plugin(<target> <host> [DESTINATION <folder>])
#
# Call it once per plugin, in the plugin's CMakeLists.txt after its add_library(<target> MODULE
# ...), and write no other install() rule for it. <host> is one of nautilus, nemo, caja, thunar,
# dolphin. The plugin keeps the file name its target gives it (libpxmenu-<host>.so) and is
# installed into the host's extension folder as the host's pkg-config file names it:
#   nautilus  libnautilus-extension-4  extensiondir
#   nemo      libnemo-extension        extensiondir
#   caja      libcaja-extension        extensiondir
#   thunar    thunarx-3                extensionsdir
#   dolphin   (no pkg-config file)     <libdir>/qt5/plugins/kf5/kfileitemaction
# DESTINATION replaces that folder for any host (a path relative to the prefix, or absolute).
# Any extra file the plugin needs (a .json beside a KDE plugin, ...) is installed by the caller
# with COMPONENT pxmenu-<host>. The call makes the component and Debian package pxmenu-<host>,
# which depends on pxmenu of the same version and on the libraries the plugin links
# (dpkg-shlibdeps); a host whose plugin is never built gets no package.
function(px_install_plugin target host)
    cmake_parse_arguments(PARSE_ARGV 2 ARG "" "DESTINATION" "")
    set(hosts nautilus nemo caja thunar dolphin)
    set(modules libnautilus-extension-4 libnemo-extension libcaja-extension thunarx-3 "")
    set(variables extensiondir extensiondir extensiondir extensionsdir "")
    list(FIND hosts ${host} index)
    if(index EQUAL -1)
        message(FATAL_ERROR "px_install_plugin: unknown host '${host}' (one of ${hosts})")
    endif()
    set(folder ${ARG_DESTINATION})
    list(GET modules ${index} module)
    list(GET variables ${index} variable)
    if(NOT folder AND module)
        _px_host_extension_dir(${module} ${variable} folder)
    elseif(NOT folder)
        set(folder ${CMAKE_INSTALL_LIBDIR}/qt5/plugins/kf5/kfileitemaction)
    endif()
    if(NOT folder)
        message(FATAL_ERROR "px_install_plugin: ${module}.pc names no ${variable}; "
                            "pass DESTINATION for ${target}")
    endif()
    set(component pxmenu-${host})
    install(TARGETS ${target} LIBRARY DESTINATION ${folder} COMPONENT ${component})
    add_dependencies(px_packaged ${target})
    set_property(GLOBAL APPEND PROPERTY PX_PLUGIN_HOSTS ${host})
    message(STATUS "Plugin ${target} installs into ${folder} (package ${component})")
endfunction()
