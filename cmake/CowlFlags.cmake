# What every target of the project is compiled and linked with. `cowlflags` carries the project's own
# warnings; the rest is global, so that the test framework is built like the code that it tests.

set(COWL_SANITIZE "" CACHE STRING "Sanitizers: empty, 'address' (with undefined) or 'thread'")
set_property(CACHE COWL_SANITIZE PROPERTY STRINGS "" address thread)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Line tables are enough for a stack trace and keep objects small.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
if(COWL_SANITIZE)
  set(CMAKE_CXX_FLAGS_DEBUG "-O1 -g1 -fno-omit-frame-pointer")
else()
  set(CMAKE_CXX_FLAGS_DEBUG "-Og -g")
endif()

# Numbers in files must not depend on whether the compiler fused a multiply and an add.
add_compile_options(-ffp-contract=off)

if(COWL_SANITIZE STREQUAL "address")
  # The vptr check compares type information, which hidden symbols make a different one per module.
  set(sanitizer -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all)
elseif(COWL_SANITIZE STREQUAL "thread")
  set(sanitizer -fsanitize=thread)
elseif(COWL_SANITIZE)
  message(FATAL_ERROR "COWL_SANITIZE is '${COWL_SANITIZE}'; it is empty, 'address' or 'thread'.")
endif()
if(sanitizer)
  add_compile_options(${sanitizer})
  add_link_options(${sanitizer})
endif()

if(WIN32)
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00
                          __USE_MINGW_ANSI_STDIO=1)
  # The C++ runtime goes into each module, so that the tree needs no DLL of the compiler's.
  add_link_options(-static -static-libgcc -static-libstdc++ -Wl,--no-insert-timestamp
                   $<$<CONFIG:Release>:-s>)
endif()

find_program(COWL_CCACHE ccache)
mark_as_advanced(COWL_CCACHE)
if(COWL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Paths below the sources count relative to the build folder, so that clones share their results.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${COWL_CCACHE})
endif()

find_package(Threads REQUIRED)

add_library(cowlflags INTERFACE)
target_compile_options(cowlflags INTERFACE -Wall -Wextra -Werror)
target_include_directories(cowlflags INTERFACE ${PROJECT_SOURCE_DIR})
target_link_libraries(cowlflags INTERFACE Threads::Threads)
