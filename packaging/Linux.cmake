include(GNUInstallDirs)

# The launcher is what users start; it starts the program (see its own comment).
function(zv_launcher output program catalogues) # the last two as seen from the launcher's folder
    set(ZV_PROGRAM_FROM_LAUNCHER ${program})
    set(ZV_CATALOGUES_FROM_LAUNCHER ${catalogues})
    configure_file(zvinstall.in ${output} @ONLY USE_SOURCE_PERMISSIONS)
endfunction()

# -- for a system --

set(program ${CMAKE_INSTALL_LIBEXECDIR}/zvinstall)
set(texts ${CMAKE_INSTALL_DATADIR}/zvinstall/translations)
file(RELATIVE_PATH program_from_launcher /${CMAKE_INSTALL_BINDIR} /${program}/zvinstall)
file(RELATIVE_PATH texts_from_launcher /${CMAKE_INSTALL_BINDIR} /${texts})
zv_launcher(${CMAKE_CURRENT_BINARY_DIR}/zvinstall ${program_from_launcher} ${texts_from_launcher})

install(PROGRAMS ${CMAKE_CURRENT_BINARY_DIR}/zvinstall DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS zvinstall RUNTIME DESTINATION ${program})
install(FILES ${catalogues} DESTINATION ${texts})

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

# Not by CMAKE_INSTALL_LIBDIR: the device manager looks nowhere else.
install(FILES 70-zvinstall.rules DESTINATION lib/udev/rules.d)

configure_file(zvinstall.1.in zvinstall.1 @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zvinstall.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# -- for the archive --

# The program needs the Qt and the C library that it was built with, or later ones, so name and README say which.
cmake_host_system_information(RESULT system QUERY DISTRIB_INFO)
set(qt_release ${Qt6_VERSION_MAJOR}.${Qt6_VERSION_MINOR})
set(ZV_ARCHIVE_NAME
    ${PROJECT_NAME}-${PROJECT_VERSION}-${system_ID}${system_VERSION_ID}-qt${qt_release}-${CMAKE_SYSTEM_PROCESSOR}
    CACHE INTERNAL "Name of the archive and of the folder in it")
configure_file(portable/README.txt.in portable/README.txt @ONLY)

zv_launcher(${CMAKE_CURRENT_BINARY_DIR}/portable/zvinstall zvinstall.bin .)
install(PROGRAMS ${CMAKE_CURRENT_BINARY_DIR}/portable/zvinstall DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
install(PROGRAMS $<TARGET_FILE:zvinstall> DESTINATION . RENAME zvinstall.bin COMPONENT portable EXCLUDE_FROM_ALL)
install(FILES ${catalogues} 70-zvinstall.rules ${CMAKE_CURRENT_BINARY_DIR}/portable/README.txt ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION . COMPONENT portable EXCLUDE_FROM_ALL)
