include(GNUInstallDirs)

# The launcher is what users start; it starts the program (see its own comment). The report is for support.
function(zv_scripts folder program data catalogues) # the last three as seen from the folder that users start them in
    set(ZV_PROGRAM_FROM_LAUNCHER ${program})
    set(ZV_CATALOGUES_FROM_LAUNCHER ${catalogues})
    set(ZV_MESSAGES_FROM_LAUNCHER ${data}/messages.sh)
    set(ZV_REDACT_FROM_LAUNCHER ${data}/redact.awk)
    configure_file(zvinstall.in ${folder}/zvinstall @ONLY USE_SOURCE_PERMISSIONS)
    configure_file(report/zvinstall-report.in ${folder}/zvinstall-report @ONLY USE_SOURCE_PERMISSIONS)
endfunction()

# -- for a system --

set(program ${CMAKE_INSTALL_LIBEXECDIR}/zvinstall)
set(texts ${CMAKE_INSTALL_DATADIR}/zvinstall/translations)
file(RELATIVE_PATH program_from_launcher /${CMAKE_INSTALL_BINDIR} /${program}/zvinstall)
file(RELATIVE_PATH texts_from_launcher /${CMAKE_INSTALL_BINDIR} /${texts})
set(data ${CMAKE_INSTALL_DATADIR}/zvinstall)
file(RELATIVE_PATH data_from_launcher /${CMAKE_INSTALL_BINDIR} /${data})
zv_scripts(${CMAKE_CURRENT_BINARY_DIR} ${program_from_launcher} ${data_from_launcher} ${texts_from_launcher})

install(PROGRAMS ${CMAKE_CURRENT_BINARY_DIR}/zvinstall ${CMAKE_CURRENT_BINARY_DIR}/zvinstall-report
    DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES messages.sh report/redact.awk DESTINATION ${data})
install(TARGETS zvinstall RUNTIME DESTINATION ${program})
install(FILES ${catalogues} DESTINATION ${texts})

install(FILES zvinstall.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES example.zvtolvar.zvinstall.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 24 32 48 64 128 256)
    install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME zvinstall.png)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/resources/zv_setup.png DESTINATION ${icons}/512x512/apps RENAME zvinstall.png)
install(FILES ${PROJECT_SOURCE_DIR}/resources/artwork/zv_setup.svg
    DESTINATION ${icons}/scalable/apps RENAME zvinstall.svg)

# Not by CMAKE_INSTALL_LIBDIR: the device manager looks nowhere else.
install(FILES 70-zvinstall.rules DESTINATION lib/udev/rules.d)

# What Debian has compressed is compressed without a name and a time, so that the same file gives the same bytes.
find_program(ZV_GZIP gzip)
function(zv_install_compressed source name destination)
    if(ZV_GZIP)
        set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
        add_custom_command(OUTPUT ${compressed} DEPENDS ${source}
            COMMAND ${ZV_GZIP} -9nc ${CMAKE_CURRENT_SOURCE_DIR}/${source} > ${compressed} VERBATIM)
        string(MAKE_C_IDENTIFIER "zv_${name}" target)
        add_custom_target(${target} ALL DEPENDS ${compressed})
        install(FILES ${compressed} DESTINATION ${destination})
    else()
        install(FILES ${source} DESTINATION ${destination} RENAME ${name})
    endif()
endfunction()
zv_install_compressed(zvinstall.1 zvinstall.1 ${CMAKE_INSTALL_MANDIR}/man1)
zv_install_compressed(report/zvinstall-report.1 zvinstall-report.1 ${CMAKE_INSTALL_MANDIR}/man1)
zv_install_compressed(debian/changelog changelog.Debian ${CMAKE_INSTALL_DATADIR}/doc/zvinstall)
install(FILES debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zvinstall)
install(FILES debian/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME zvinstall)

# -- for the archive --

zv_scripts(${CMAKE_CURRENT_BINARY_DIR}/portable zvinstall.bin support .)
set(portable ${CMAKE_CURRENT_BINARY_DIR}/portable)
install(PROGRAMS ${portable}/zvinstall ${portable}/zvinstall-report DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES messages.sh report/redact.awk DESTINATION support COMPONENT portable EXCLUDE_FROM_ALL)
install(PROGRAMS $<TARGET_FILE:zvinstall> DESTINATION . RENAME zvinstall.bin COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES ${catalogues} 70-zvinstall.rules portable/README.txt ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)

# -- for both: the documents for users --

find_program(ZV_CMARK cmark-gfm)
find_program(ZV_AWK awk)
if(ZV_CMARK AND ZV_AWK)
    set(documents manual troubleshooting)
    string(JOIN " " names ${documents})
    set(pages)
    foreach(document ${documents})
        set(source ${PROJECT_SOURCE_DIR}/docs/${document}.md)
        set(page ${CMAKE_CURRENT_BINARY_DIR}/documents/${document}.html)
        add_custom_command(OUTPUT ${page} DEPENDS ${source} documents/page.awk
            COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/documents
            COMMAND ${ZV_CMARK} --extension table ${source} | ${CMAKE_COMMAND} -E env LC_ALL=C
                ${ZV_AWK} -v "pages=${names}" -f ${CMAKE_CURRENT_SOURCE_DIR}/documents/page.awk > ${page}
            VERBATIM)
        list(APPEND pages ${page})
    endforeach()
    add_custom_target(zv_documents ALL DEPENDS ${pages})
    foreach(place ${CMAKE_INSTALL_DATADIR}/doc/zvinstall doc)
        set(component)
        if(place STREQUAL "doc")
            set(component COMPONENT portable EXCLUDE_FROM_ALL)
        endif()
        install(FILES ${pages} DESTINATION ${place} ${component})
        install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/images DESTINATION ${place} ${component}
            PATTERN wizard.png EXCLUDE) # only the README shows it
    endforeach()
else()
    message(STATUS "cmark-gfm was not found: building without the manual as HTML")
endif()

# -- the Debian package --

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zvinstall)
set(CPACK_PACKAGE_CONTACT "ZV Tolvar Setup maintainers <maintainers@zvtolvar.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.zvtolvar.example)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The toolkit's own texts (Cancel, the file dialog), and the desktops that speak Wayland alone.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "wizard that puts Wi-Fi settings into a ZV Tolvar over USB")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "\
ZV Tolvar Setup is a desktop wizard that puts your Wi-Fi settings into a
ZV Tolvar. Plug the device into a USB port, start the wizard, pick your
network, type its passphrase, and let the device try it before it is saved.
.
The wizard knows the device by its USB bridge and leaves every other port
alone. Whoever sits at the computer may open it; no group has to be joined.")
include(CPack)
