# Takes a build tool from a native tree when the tree at hand is for another system, which cannot run
# what it builds. The tool is rebuilt there whenever its sources change.
set(SORVANIX_NATIVE_BUILD ${PROJECT_SOURCE_DIR}/build/dev CACHE PATH
  "Build tree for this machine; configured when there is none")

# native_tool(NAME FILE): an imported program NAME, FILE of the native tree.
function(native_tool name file)
  set(program ${SORVANIX_NATIVE_BUILD}/${file})
  if(NOT EXISTS ${SORVANIX_NATIVE_BUILD}/CMakeCache.txt)
    execute_process(COMMAND_ERROR_IS_FATAL ANY COMMAND ${CMAKE_COMMAND}
      -S ${PROJECT_SOURCE_DIR} -B ${SORVANIX_NATIVE_BUILD} -G ${CMAKE_GENERATOR}
      -D CMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE})
  endif()
  add_custom_target(native_${name}
    COMMAND ${CMAKE_COMMAND} --build ${SORVANIX_NATIVE_BUILD} --target ${name}
    BYPRODUCTS ${program} USES_TERMINAL)
  add_executable(${name} IMPORTED GLOBAL)
  set_target_properties(${name} PROPERTIES IMPORTED_LOCATION ${program})
  add_dependencies(${name} native_${name})
endfunction()
