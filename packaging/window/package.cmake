# The window as a package of its own, beside that of the console program.
set(sizes 16 24 32 48 64 128 256)
find_program(RSVG_CONVERT rsvg-convert)
set(drawing ${CMAKE_SOURCE_DIR}/resources/icons/corvanemap.svg)
set(icons "")
if(RSVG_CONVERT)
  foreach(size ${sizes})
    set(icon ${documents}/icons/${size}x${size}/corvanemap.png)
    add_custom_command(
      OUTPUT ${icon}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${documents}/icons/${size}x${size}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${icon} ${drawing}
      DEPENDS ${drawing} VERBATIM)
    list(APPEND icons ${icon})
    install(FILES ${icon} DESTINATION share/icons/hicolor/${size}x${size}/apps COMPONENT window)
  endforeach()
endif()
add_custom_target(package_icons DEPENDS ${icons})

install(FILES ${drawing} DESTINATION share/icons/hicolor/scalable/apps COMPONENT window)
install(FILES window/corvanemap-window.desktop DESTINATION share/applications COMPONENT window)
install(FILES window/example.corvane_map.CorvaneMap.metainfo.xml DESTINATION share/metainfo
        COMPONENT window)
install(FILES ${documents}/corvanemap-window.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
        COMPONENT window)
install(FILES copyright ${documents}/changelog.Debian.gz DESTINATION share/doc/corvane-map-window
        COMPONENT window)

# What belongs to no component is the console program's.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Unspecified window)
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_NAME corvane-map)
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME corvane-map-window)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "corvane-map (= ${PROJECT_VERSION}-1)")
# The summary above them is one for both.
set(CPACK_DEBIAN_UNSPECIFIED_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_DEBIAN_WINDOW_DESCRIPTION
"The window: it shows an itinerary as a list and on a map, lets it be changed
in both, has the way calculated by the service that the user chooses, and
saves it in the format that a navigation device or route planner expects.")
