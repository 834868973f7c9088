# The installer as a macOS application bundle, signed only for this machine, with the hardened
# runtime. script/package-mac signs it for distribution.
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
  message(FATAL_ERROR "Set CMAKE_OSX_DEPLOYMENT_TARGET to the oldest system, like the mac preset.")
endif()
foreach(tool ibtool sips iconutil codesign)
  find_program(${tool} ${tool} REQUIRED)
endforeach()

target_compile_options(morvella_cocoa PUBLIC $<$<COMPILE_LANGUAGE:OBJCXX>:-fno-objc-arc>)
target_link_libraries(morvella_cocoa PUBLIC
  "-framework AppKit" "-framework Foundation" "-framework QuartzCore")

set(interface "${PROJECT_SOURCE_DIR}/resources/MainMenu.xib")
set(compiled_interface "${CMAKE_BINARY_DIR}/MainMenu.nib")
add_custom_command(
  OUTPUT "${compiled_interface}"
  COMMAND ${ibtool} --errors --warnings --notices --output-format human-readable-text
    --target-device mac --minimum-deployment-target ${CMAKE_OSX_DEPLOYMENT_TARGET}
    --compile "${compiled_interface}" "${interface}"
  DEPENDS "${interface}"
  VERBATIM)

set(drawing "${PROJECT_SOURCE_DIR}/resources/icon/icon.png")
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

set(resources ${MORVELLA_RESOURCE_FILES} "${compiled_interface}" "${icon}")
set_source_files_properties(${resources} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set(information "${PROJECT_SOURCE_DIR}/resources/Info.plist.in")
add_executable(installer MACOSX_BUNDLE app/main.mm ${resources})
add_dependencies(installer payload)
target_link_libraries(installer PRIVATE morvella_cocoa)
set_target_properties(installer PROPERTIES
  OUTPUT_NAME "Morvella Installer"
  RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}"
  MACOSX_BUNDLE_INFO_PLIST "${information}")

# The signature seals the executable and every resource.
set(entitlements "${PROJECT_SOURCE_DIR}/resources/MorvellaInstaller.entitlements")
set(signed "${CMAKE_BINARY_DIR}/signed.stamp")
add_custom_command(
  OUTPUT "${signed}"
  COMMAND ${codesign} --force --sign - --options runtime --entitlements "${entitlements}"
    "$<TARGET_BUNDLE_DIR:installer>"
  COMMAND ${CMAKE_COMMAND} -E touch "${signed}"
  DEPENDS installer ${resources} "${information}" "${entitlements}"
  VERBATIM)
add_custom_target(bundle ALL DEPENDS "${signed}")
