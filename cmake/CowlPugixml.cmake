# pugixml: the distribution's library on Linux. There is no package of it for Windows, so there it is
# built from the source package of the same distribution, which is fetched once for all build folders
# of a user.

if(NOT WIN32)
  find_package(pugixml REQUIRED)
  add_library(cowlpugixml INTERFACE)
  target_link_libraries(cowlpugixml INTERFACE pugixml::pugixml)
  return()
endif()

set(cache $ENV{XDG_CACHE_HOME})
if(NOT cache)
  set(cache $ENV{HOME}/.cache)
endif()
set(COWL_PUGIXML_DIR ${cache}/cowlcore/pugixml CACHE PATH "Unpacked source package of pugixml")
set(source ${COWL_PUGIXML_DIR}/src/pugixml.cpp)
if(NOT EXISTS ${source})
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  execute_process(COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/fetchsource.py pugixml
                          ${COWL_PUGIXML_DIR} RESULT_VARIABLE failed)
  if(failed OR NOT EXISTS ${source})
    message(FATAL_ERROR "There is no ${source}. tools/fetchsource.py tells above why it could not be "
                        "fetched; a folder that holds the unpacked source package of pugixml can be "
                        "named with COWL_PUGIXML_DIR.")
  endif()
endif()
add_library(cowlpugixml STATIC ${source})
target_include_directories(cowlpugixml SYSTEM PUBLIC ${COWL_PUGIXML_DIR}/src)
