# Building a module against a devkit: MAYA_DEVKIT is a folder with include/maya and lib.

if(NOT EXISTS ${MAYA_DEVKIT}/include/maya/MTypes.h)
  message(FATAL_ERROR "MAYA_DEVKIT=${MAYA_DEVKIT} holds no include/maya/MTypes.h")
endif()

# Gives a module the devkit's headers and libraries, and the definitions and file name of its platform.
function(maya_devkit_module target)
  target_include_directories(${target} SYSTEM PRIVATE ${MAYA_DEVKIT}/include)
  foreach(name Foundation OpenMaya OpenMayaUI OpenMayaAnim OpenMayaRender)
    # Nowhere else: macOS has a Foundation of its own.
    find_library(MAYA_${name}_LIBRARY ${name} PATHS ${MAYA_DEVKIT}/lib ${MAYA_DEVKIT}/Maya.app/Contents/MacOS
      NO_DEFAULT_PATH)
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
