# The files of the demo's package. They are installed by
#     cmake --install FOLDER --component demo --prefix /usr
include(GNUInstallDirs)
set(id example.norvel.TamberDemo)
set(here "${CMAKE_CURRENT_LIST_DIR}")

install(TARGETS tamber-demo RUNTIME COMPONENT demo)
install(FILES "${here}/${id}.desktop"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT demo)
install(FILES "${here}/${id}.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT demo)
install(FILES "${here}/tamber-demo.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT demo)
foreach(size 16 24 32 48 64 128 256)
    install(FILES "${PROJECT_SOURCE_DIR}/resources/icons/tamber-${size}.png"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps"
        RENAME tamber-demo.png COMPONENT demo)
endforeach()
