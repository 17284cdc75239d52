# The Debian package: `cpack --preset deb` after a release build (see the README). What it holds
# is what `cmake --install` puts in place, plus the units that refresh the metrics, the copyright
# and the changelog.
set(packaging ${PROJECT_SOURCE_DIR}/resources/packaging)
set(LULLWICK_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/lullwick)

# Man pages and the changelog compressed without a name or time stamp: the same bytes every build.
find_program(LULLWICK_GZIP gzip REQUIRED)
set(compressed)
foreach(source IN ITEMS lullwick.1 lullwick-pmset.1 lullwick-report.1 debian/changelog)
    get_filename_component(name ${source} NAME)
    if(name STREQUAL "changelog")
        set(name changelog.Debian) # what Debian calls the changelog of a package not made by Debian itself
    endif()
    set(output ${CMAKE_BINARY_DIR}/packaging/${name}.gz)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E copy ${packaging}/${source} ${CMAKE_BINARY_DIR}/packaging/${name}
        COMMAND ${LULLWICK_GZIP} -9nf ${CMAKE_BINARY_DIR}/packaging/${name}
        DEPENDS ${packaging}/${source} VERBATIM)
    list(APPEND compressed ${output})
endforeach()
add_custom_target(lullwick_compressed_docs ALL DEPENDS ${compressed})
list(POP_BACK compressed changelog)
install(FILES ${compressed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${changelog} ${packaging}/debian/copyright DESTINATION ${LULLWICK_DOC_DIR})
install(FILES ${packaging}/debian/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
    RENAME lullwick)

# The units go beside systemd's own; on Debian 12 that is /lib, which is /usr/lib.
set(LULLWICK_SYSTEMD_UNIT_DIR lib/systemd/system CACHE STRING "Where the systemd units go, under the prefix")
install(FILES ${packaging}/systemd/lullwick-metrics.service ${packaging}/systemd/lullwick-metrics.timer
    DESTINATION ${LULLWICK_SYSTEMD_UNIT_DIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lullwick)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Lullwick developers")
set(CPACK_PACKAGE_CONTACT "The Lullwick developers <lullwick@users.noreply.github.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "explains why the computer won't sleep or restart")
set(CPACK_PACKAGE_DESCRIPTION
"Lullwick explains in plain language what keeps a computer awake: every
program that holds off sleep through systemd-logind or the desktop session,
sorted by the kind of sleep it blocks, with what the program is and what can
be done about it. It also ranks the evidence of what may hold up a restart.
.
The package holds the window (lullwick), a command-line report
(lullwick-report) and the helper both run (lullwick-pmset). The report can
write metrics for the Prometheus node exporter's textfile collector; a systemd
timer, not enabled by the package, refreshes them every minute.")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://github.com/lullwick/lullwick)
# Libraries from the binaries (dpkg-shlibdeps); what the helper talks to and the timer needs besides.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "dbus, systemd")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
    ${packaging}/debian/postinst ${packaging}/debian/prerm ${packaging}/debian/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
