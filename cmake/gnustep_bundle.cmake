# The installer as a GNUstep application bundle, with a stand-in for macOS's archiver inside.
add_subdirectory(platform/gnustep)

target_link_libraries(morvella_cocoa PUBLIC gnustep_flags)

add_executable(installer app/main.mm)
target_link_libraries(installer PRIVATE morvella_cocoa morvella_gnustep)

set(bundle "${CMAKE_BINARY_DIR}/Morvella Installer.app")
set_target_properties(installer PROPERTIES
  OUTPUT_NAME "Morvella Installer"
  RUNTIME_OUTPUT_DIRECTORY "${bundle}")
configure_file(platform/gnustep/ditto "${bundle}/Helpers/ditto" COPYONLY)

# One stamp for all resources: if any of them changes, all are copied again.
add_custom_command(
  OUTPUT "${CMAKE_BINARY_DIR}/resources.stamp"
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${bundle}/Resources"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${bundle}/Resources"
  COMMAND ${CMAKE_COMMAND} -E copy ${MORVELLA_RESOURCE_FILES} "${bundle}/Resources"
  COMMAND ${CMAKE_COMMAND} -E touch "${CMAKE_BINARY_DIR}/resources.stamp"
  DEPENDS ${MORVELLA_RESOURCE_FILES} payload
  VERBATIM)
add_custom_target(bundle_resources ALL DEPENDS "${CMAKE_BINARY_DIR}/resources.stamp")
