# cmake -DFROM=DIR -DTO=DIR -P take_payload.cmake
# Takes a maker's three archives into the build; stops it when something is missing that the
# installation cannot do without, and names all of it.

set(archives morvella.zip Tressimo.zip ISF.zip)
set(missing "")
foreach(archive IN LISTS archives)
  if(NOT EXISTS "${FROM}/${archive}" OR IS_DIRECTORY "${FROM}/${archive}")
    string(APPEND missing "\n  ${archive}")
  endif()
endforeach()
if(missing)
  message(FATAL_ERROR "The payload folder ${FROM} lacks:${missing}")
endif()

# Names beyond ASCII are listed only in a locale that has them.
if(CMAKE_HOST_APPLE)
  set(ENV{LC_ALL} en_US.UTF-8)
else()
  set(ENV{LC_ALL} C.UTF-8)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E tar tf "${FROM}/morvella.zip"
  OUTPUT_VARIABLE names RESULT_VARIABLE failed ERROR_QUIET)
if(failed)
  message(FATAL_ERROR "${FROM}/morvella.zip cannot be read as a zip archive.")
endif()

# The names stay one text: as a list, a bracket or a semicolon in one of them would garble the others.
string(REPLACE "\n./" "\n" names "\n${names}")
foreach(required IN ITEMS "Morvella/Morvella.app/" "Morvella/Sources/Vellicor.amxd\n")
  string(FIND "${names}" "\n${required}" position)
  if(position EQUAL -1)
    string(STRIP "${required}" required)
    string(APPEND missing "\n  ${required}")
  endif()
endforeach()
if(missing)
  message(FATAL_ERROR
    "${FROM}/morvella.zip does not hold what the installation needs. It lacks:${missing}")
endif()

foreach(archive IN LISTS archives)
  file(COPY_FILE "${FROM}/${archive}" "${TO}/${archive}" ONLY_IF_DIFFERENT)
endforeach()
