include(GNUInstallDirs)

# Users start the launcher, which starts the program (see the comment in the launcher). The report is for support.
function(zv_scripts folder program data translations) # the last three are relative to the folder of the launcher
    set(ZV_PROGRAM_FROM_LAUNCHER ${program})
    set(ZV_TRANSLATIONS_FROM_LAUNCHER ${translations})
    set(ZV_MESSAGES_FROM_LAUNCHER ${data}/messages.sh)
    set(ZV_REDACT_FROM_LAUNCHER ${data}/redact.awk)
    configure_file(zvinstall.in ${folder}/zvinstall @ONLY USE_SOURCE_PERMISSIONS)
    configure_file(report/zvinstall-report.in ${folder}/zvinstall-report @ONLY USE_SOURCE_PERMISSIONS)
endfunction()

# -- System installation --

set(program ${CMAKE_INSTALL_LIBEXECDIR}/zvinstall)
set(translations_folder ${CMAKE_INSTALL_DATADIR}/zvinstall/translations)
file(RELATIVE_PATH program_from_launcher /${CMAKE_INSTALL_BINDIR} /${program}/zvinstall)
file(RELATIVE_PATH translations_from_launcher /${CMAKE_INSTALL_BINDIR} /${translations_folder})
set(data ${CMAKE_INSTALL_DATADIR}/zvinstall)
file(RELATIVE_PATH data_from_launcher /${CMAKE_INSTALL_BINDIR} /${data})
zv_scripts(${CMAKE_CURRENT_BINARY_DIR} ${program_from_launcher} ${data_from_launcher} ${translations_from_launcher})

install(PROGRAMS ${CMAKE_CURRENT_BINARY_DIR}/zvinstall ${CMAKE_CURRENT_BINARY_DIR}/zvinstall-report
    DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES messages.sh report/redact.awk DESTINATION ${data})
install(TARGETS zvinstall RUNTIME DESTINATION ${program})
install(FILES ${translations} DESTINATION ${translations_folder})

install(FILES example.zvtolvar.zvinstall.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
configure_file(example.zvtolvar.zvinstall.metainfo.xml.in example.zvtolvar.zvinstall.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/example.zvtolvar.zvinstall.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 24 32 48 64 128 256)
    install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME zvinstall.png)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/resources/zv_setup.png DESTINATION ${icons}/512x512/apps RENAME zvinstall.png)
install(FILES ${PROJECT_SOURCE_DIR}/resources/artwork/zv_setup.svg
    DESTINATION ${icons}/scalable/apps RENAME zvinstall.svg)

# Not CMAKE_INSTALL_LIBDIR: among the library folders, udev searches only this one.
install(FILES 70-zvinstall.rules DESTINATION lib/udev/rules.d)

configure_file(zvinstall.1.in zvinstall.1 @ONLY)
configure_file(report/zvinstall-report.1.in zvinstall-report.1 @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zvinstall.1 ${CMAKE_CURRENT_BINARY_DIR}/zvinstall-report.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# -- Archive --

# The program needs the versions of Qt and the C library that it was built with, or later ones. The archive's name and
# its README.txt therefore state the release and the Qt version.
cmake_host_system_information(RESULT system QUERY DISTRIB_INFO)
set(qt_release ${Qt6_VERSION_MAJOR}.${Qt6_VERSION_MINOR})
set(ZV_ARCHIVE_NAME
    ${PROJECT_NAME}-${PROJECT_VERSION}-${system_ID}${system_VERSION_ID}-qt${qt_release}-${CMAKE_SYSTEM_PROCESSOR}
    CACHE INTERNAL "Name of the archive and of the folder in it")
configure_file(portable/README.txt.in portable/README.txt @ONLY)

zv_scripts(${CMAKE_CURRENT_BINARY_DIR}/portable zvinstall.bin support .)
set(portable ${CMAKE_CURRENT_BINARY_DIR}/portable)
install(PROGRAMS ${portable}/zvinstall ${portable}/zvinstall-report DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES messages.sh report/redact.awk DESTINATION support COMPONENT portable EXCLUDE_FROM_ALL)
install(PROGRAMS $<TARGET_FILE:zvinstall> DESTINATION . RENAME zvinstall.bin COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES ${translations} 70-zvinstall.rules ${CMAKE_CURRENT_BINARY_DIR}/portable/README.txt ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)

# -- System and archive: the documents for users --

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
