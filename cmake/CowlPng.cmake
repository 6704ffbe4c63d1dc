# libpng, for pictures: the distribution's library on Linux. There is no package of it for Windows, so
# there it is built from the source package, and linked with its zlib into the library that needs it.

add_library(cowlpng INTERFACE)
if(NOT WIN32)
  find_package(PNG REQUIRED)
  target_link_libraries(cowlpng INTERFACE PNG::PNG)
  return()
endif()

enable_language(C)
set(ZLIB_USE_STATIC_LIBS ON)
find_package(ZLIB)
if(NOT ZLIB_FOUND)
  message(FATAL_ERROR "There is no zlib for Windows: install the package libz-mingw-w64-dev.")
endif()
include(CowlSourcePackage)
cowl_source_package(COWL_PNG_DIR libpng1.6 png.c)
# The sources lack their configuration, which the package has for all of its features.
set(generated ${PROJECT_BINARY_DIR}/libpng)
configure_file(${COWL_PNG_DIR}/scripts/pnglibconf.h.prebuilt ${generated}/pnglibconf.h COPYONLY)
file(GLOB sources ${COWL_PNG_DIR}/png*.c)
list(REMOVE_ITEM sources ${COWL_PNG_DIR}/pngtest.c)
add_library(cowllibpng STATIC ${sources})
set_target_properties(cowllibpng PROPERTIES UNITY_BUILD OFF)
target_include_directories(cowllibpng SYSTEM PUBLIC ${generated} ${COWL_PNG_DIR})
target_link_libraries(cowllibpng PUBLIC ZLIB::ZLIB)
target_link_libraries(cowlpng INTERFACE cowllibpng)
