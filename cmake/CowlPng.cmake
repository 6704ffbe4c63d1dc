# libpng, for pictures: the distribution's library on Linux. There is no package of it for Windows, so
# there COWL_PNG_FOUND is off and the program says that it writes no pictures.

set(COWL_PNG_FOUND OFF)
add_library(cowlpng INTERFACE)
if(NOT WIN32)
  find_package(PNG REQUIRED)
  target_link_libraries(cowlpng INTERFACE PNG::PNG)
  set(COWL_PNG_FOUND ON)
endif()
