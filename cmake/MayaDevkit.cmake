# Building a module against a devkit: MAYA_DEVKIT is a folder with include/maya and lib.

if(NOT EXISTS ${MAYA_DEVKIT}/include/maya/MTypes.h)
  message(FATAL_ERROR "MAYA_DEVKIT=${MAYA_DEVKIT} holds no include/maya/MTypes.h")
endif()

set(maya_devkit_libraries Foundation OpenMaya OpenMayaUI OpenMayaAnim OpenMayaRender)

# Another devkit in the same build folder is looked through anew, or its headers would go with libraries of the one
# before.
if(NOT "${MAYA_DEVKIT}" STREQUAL "${MAYA_DEVKIT_SEARCHED}")
  foreach(name IN LISTS maya_devkit_libraries)
    unset(MAYA_${name}_LIBRARY CACHE)
  endforeach()
  set(MAYA_DEVKIT_SEARCHED "${MAYA_DEVKIT}" CACHE INTERNAL "The devkit that the cached libraries are of")
endif()
foreach(name IN LISTS maya_devkit_libraries)
  # Nowhere else: macOS has a Foundation of its own.
  find_library(MAYA_${name}_LIBRARY ${name} PATHS ${MAYA_DEVKIT}/lib ${MAYA_DEVKIT}/Maya.app/Contents/MacOS
    NO_DEFAULT_PATH)
endforeach()
if(NOT MAYA_OpenMaya_LIBRARY)
  message(FATAL_ERROR "MAYA_DEVKIT=${MAYA_DEVKIT} holds no lib with OpenMaya")
endif()

# Gives a module the devkit's headers and libraries, and the definitions and file name of its platform.
function(maya_devkit_module target)
  target_include_directories(${target} SYSTEM PRIVATE ${MAYA_DEVKIT}/include)
  foreach(name IN LISTS maya_devkit_libraries)
    if(MAYA_${name}_LIBRARY)
      target_link_libraries(${target} PRIVATE ${MAYA_${name}_LIBRARY})
    endif()
  endforeach()

  target_compile_definitions(${target} PRIVATE REQUIRE_IOSTREAM)
  if(WIN32)
    target_compile_definitions(${target} PRIVATE NT_PLUGIN _WINDLL WIN32 _WINDOWS)
    target_link_options(${target} PRIVATE /export:initializePlugin /export:uninitializePlugin)
    set_target_properties(${target} PROPERTIES SUFFIX .mll)
  elseif(APPLE)
    target_compile_definitions(${target} PRIVATE OSMac_ MAC_PLUGIN _BOOL)
    set_target_properties(${target} PROPERTIES SUFFIX .bundle)
  else()
    target_compile_definitions(${target} PRIVATE LINUX _BOOL)
    set_target_properties(${target} PROPERTIES SUFFIX .so)
  endif()
endfunction()
