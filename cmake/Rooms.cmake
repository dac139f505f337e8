# A room is a top folder of the tree. Each gets an include root of its own (a folder in the build tree that holds
# nothing but a link to the room), so that a target sees exactly the rooms it links: an include line across a
# boundary doesn't compile.
function(add_room name)
  set(root ${CMAKE_BINARY_DIR}/roots/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${name} ${root}/${name} SYMBOLIC)
  add_library(room_${name} INTERFACE)
  target_include_directories(room_${name} INTERFACE ${root})
endfunction()

# The objects of a room, all but a program's Main.cpp. Tests link the objects, deliverables wrap the same objects.
function(add_room_objects name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${name}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/Main\\.cpp$")
  add_library(${name}_objects OBJECT ${sources})
  target_link_libraries(${name}_objects PUBLIC room_${name} ${ARG_LINKS} PRIVATE project_options)
endfunction()
