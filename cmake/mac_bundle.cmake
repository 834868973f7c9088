# The installer as a macOS application bundle. It is signed for this machine only, with the hardened
# runtime that script/package-mac gives it for all others.
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
  message(FATAL_ERROR "CMAKE_OSX_DEPLOYMENT_TARGET names no oldest system; the preset mac does.")
endif()
foreach(tool ibtool sips iconutil codesign)
  find_program(${tool} ${tool} REQUIRED)
endforeach()

target_compile_options(morvella_cocoa PUBLIC $<$<COMPILE_LANGUAGE:OBJCXX>:-fno-objc-arc>)
target_link_libraries(morvella_cocoa PUBLIC
  "-framework AppKit" "-framework Foundation" "-framework QuartzCore")

set(entitlements "${PROJECT_SOURCE_DIR}/resources/MorvellaInstaller.entitlements")
set(information "${CMAKE_BINARY_DIR}/Info.plist")
configure_file("${PROJECT_SOURCE_DIR}/resources/Info.plist.in" "${information}" @ONLY)
set(interface "${PROJECT_SOURCE_DIR}/resources/MainMenu.xib")
set(drawing "${PROJECT_SOURCE_DIR}/resources/icon/icon.png")

add_executable(installer MACOSX_BUNDLE app/main.mm)
target_link_libraries(installer PRIVATE morvella_cocoa)
set_target_properties(installer PROPERTIES
  OUTPUT_NAME "Morvella Installer"
  RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}"
  MACOSX_BUNDLE_INFO_PLIST "${information}")
set(bundle "${CMAKE_BINARY_DIR}/Morvella Installer.app")
set(bundle_resources "${bundle}/Contents/Resources")

set(iconset "${CMAKE_BINARY_DIR}/AppIcon.iconset")
set(icon "${CMAKE_BINARY_DIR}/AppIcon.icns")
set(render_sizes)
foreach(points 16 32 128 256 512)
  math(EXPR pixels "${points} * 2")
  list(APPEND render_sizes
    COMMAND ${sips} -z ${points} ${points} "${drawing}"
      --out "${iconset}/icon_${points}x${points}.png"
    COMMAND ${sips} -z ${pixels} ${pixels} "${drawing}"
      --out "${iconset}/icon_${points}x${points}@2x.png")
endforeach()
add_custom_command(
  OUTPUT "${icon}"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${iconset}"
  ${render_sizes}
  COMMAND ${iconutil} --convert icns --output "${icon}" "${iconset}"
  DEPENDS "${drawing}"
  VERBATIM)

# One stamp for the finished bundle: the signature seals the executable and every resource.
set(finished "${CMAKE_BINARY_DIR}/bundle.stamp")
add_custom_command(
  OUTPUT "${finished}"
  COMMAND ${CMAKE_COMMAND} -E rm -rf "${bundle_resources}"
  COMMAND ${CMAKE_COMMAND} -E make_directory "${bundle_resources}"
  COMMAND ${CMAKE_COMMAND} -E copy ${MORVELLA_RESOURCE_FILES} "${icon}" "${bundle_resources}"
  COMMAND ${ibtool} --errors --warnings --notices --output-format human-readable-text
    --target-device mac --minimum-deployment-target ${CMAKE_OSX_DEPLOYMENT_TARGET}
    --compile "${bundle_resources}/MainMenu.nib" "${interface}"
  COMMAND ${codesign} --force --sign - --options runtime --entitlements "${entitlements}"
    "${bundle}"
  COMMAND ${CMAKE_COMMAND} -E touch "${finished}"
  DEPENDS installer payload ${MORVELLA_RESOURCE_FILES} "${icon}" "${interface}" "${information}"
    "${entitlements}"
  VERBATIM)
add_custom_target(bundle ALL DEPENDS "${finished}")
