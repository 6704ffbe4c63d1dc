# What the distribution has no Windows package of is built from its source package, which is fetched
# once for all build folders of a user.
#
#   cowl_source_package(VARIABLE PACKAGE FILE)
#
# leaves the folder of the unpacked package in the cache variable; FILE is one that it has to hold.

function(cowl_source_package variable package file)
  set(cache $ENV{XDG_CACHE_HOME})
  if(NOT cache)
    set(cache $ENV{HOME}/.cache)
  endif()
  set(${variable} ${cache}/cowlcore/${package} CACHE PATH "Unpacked source package of ${package}")
  set(folder ${${variable}})
  if(EXISTS ${folder}/${file})
    return()
  endif()
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  execute_process(COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/fetchsource.py
                          ${package} ${folder} RESULT_VARIABLE failed)
  if(failed OR NOT EXISTS ${folder}/${file})
    message(FATAL_ERROR "There is no ${folder}/${file}. tools/fetchsource.py tells above why it could "
                        "not be fetched; a folder that holds the unpacked source package of "
                        "${package} can be named with ${variable}.")
  endif()
endfunction()
