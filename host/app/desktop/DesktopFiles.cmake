# The host in the desktop: its icons, the .desktop file and the MIME type of layout files.
# Included by host/app/CMakeLists.txt, whose library takes the rendered application icons
# in as resources, so it runs in that folder's scope.
#
# The SVG files are the one source of the icons: every PNG size is rendered from them at
# build time, both the ones installed into the hicolor theme and the ones the program shows.
find_program(VX_RSVG_CONVERT rsvg-convert)
if(NOT VX_RSVG_CONVERT)
    message(FATAL_ERROR "rsvg-convert (package librsvg2-bin) renders the icons; scripts/install-deps.sh installs it")
endif()

set(VX_DESKTOP_DIR ${CMAKE_CURRENT_SOURCE_DIR}/desktop)
set(VX_ICON_THEME_DIR ${CMAKE_CURRENT_BINARY_DIR}/icons/hicolor)
# 512 serves the 256 pixel icon on screens with twice the pixel density.
set(VX_ICON_SIZES 16 22 24 32 48 64 128 256 512)

# Renders <name>.svg into the theme folder at every size; the PNG files go into outVar.
function(vx_render_icon name context outVar)
    set(svg ${VX_DESKTOP_DIR}/${name}.svg)
    set(pngs)
    foreach(size ${VX_ICON_SIZES})
        set(folder ${VX_ICON_THEME_DIR}/${size}x${size}/${context})
        set(png ${folder}/${name}.png)
        add_custom_command(OUTPUT ${png}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            COMMAND ${VX_RSVG_CONVERT} --width ${size} --height ${size} --output ${png} ${svg}
            DEPENDS ${svg}
            COMMENT "Rendering ${name}.svg at ${size} x ${size}"
            VERBATIM)
        list(APPEND pngs ${png})
    endforeach()
    set(${outVar} ${pngs} PARENT_SCOPE)
endfunction()

vx_render_icon(vxhost apps VX_APP_ICON_PNGS)
vx_render_icon(application-x-vexor-layout mimetypes VX_LAYOUT_ICON_PNGS)

# The program's window icon: the rendered sizes as resources ":/icons/vxhost-<size>.png".
set(VX_APP_ICON_QRC_ENTRIES "")
foreach(size ${VX_ICON_SIZES})
    string(APPEND VX_APP_ICON_QRC_ENTRIES
        "        <file alias=\"vxhost-${size}.png\">${VX_ICON_THEME_DIR}/${size}x${size}/apps/vxhost.png</file>\n")
endforeach()
configure_file(${VX_DESKTOP_DIR}/vxhost_icons.qrc.in ${CMAKE_CURRENT_BINARY_DIR}/vxhost_icons.qrc @ONLY)
qt5_add_resources(VX_APP_ICON_SOURCES ${CMAKE_CURRENT_BINARY_DIR}/vxhost_icons.qrc)
# The layout icon is only installed; building the host builds it (host/app/CMakeLists.txt).
add_custom_target(vxhost_layout_icons DEPENDS ${VX_LAYOUT_ICON_PNGS})

install(DIRECTORY ${VX_ICON_THEME_DIR} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${VX_DESKTOP_DIR}/vxhost.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${VX_DESKTOP_DIR}/application-x-vexor-layout.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes)
install(FILES ${VX_DESKTOP_DIR}/vxhost.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${VX_DESKTOP_DIR}/vxhost-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
    RENAME vxhost.xml)
