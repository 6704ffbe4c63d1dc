# pugixml: the distribution's library on Linux. There is no package of it for Windows, so there it is
# built from the source package.

if(NOT WIN32)
  find_package(pugixml REQUIRED)
  add_library(cowlpugixml INTERFACE)
  target_link_libraries(cowlpugixml INTERFACE pugixml::pugixml)
  return()
endif()

include(CowlSourcePackage)
cowl_source_package(COWL_PUGIXML_DIR pugixml src/pugixml.cpp)
add_library(cowlpugixml STATIC ${COWL_PUGIXML_DIR}/src/pugixml.cpp)
target_include_directories(cowlpugixml SYSTEM PUBLIC ${COWL_PUGIXML_DIR}/src)
