# What scripts run in: CPython with its development files, and pybind11. COWL_PYTHON_FOUND tells
# whether the component `pythonscript` is built; the target cowlpython is what it links.
#
# On Linux it is the system's own Python, whose packages, NumPy among them, the distribution has, also
# where another Python stands first in PATH. For Windows COWL_PYTHON_DIR names a folder with CPython's
# include/ and libs/; without one there is no script engine there.

set(COWL_PYTHON_FOUND OFF)
if(WIN32)
  set(COWL_PYTHON_DIR "" CACHE PATH "CPython for Windows x64, with include/ and libs/")
  file(GLOB libraries ${COWL_PYTHON_DIR}/libs/python3??.lib)
  if(COWL_PYTHON_DIR AND EXISTS ${COWL_PYTHON_DIR}/include/Python.h AND libraries)
    set(Python_INCLUDE_DIRS ${COWL_PYTHON_DIR}/include)
    list(GET libraries 0 Python_LIBRARIES)
    set(COWL_PYTHON_FOUND ON)
  endif()
else()
  set(Python_ROOT_DIR /usr)
  set(Python_FIND_STRATEGY LOCATION)
  find_package(Python 3.10 REQUIRED COMPONENTS Interpreter Development.Embed)
  execute_process(COMMAND ${Python_EXECUTABLE} -c "import sys; print(sys.base_prefix, end='')"
                  OUTPUT_VARIABLE COWL_PYTHON_HOME COMMAND_ERROR_IS_FATAL ANY)
  set(COWL_PYTHON_FOUND ON)
endif()

if(COWL_PYTHON_FOUND)
  find_path(COWL_PYBIND11_DIR pybind11/embed.h NO_CMAKE_FIND_ROOT_PATH)
  if(NOT COWL_PYBIND11_DIR)
    message(FATAL_ERROR "There is no pybind11: install the package pybind11-dev.")
  endif()
  # A link, so that a cross build sees nothing else of the folder that it lies in.
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/pybind11)
  file(CREATE_LINK ${COWL_PYBIND11_DIR}/pybind11 ${PROJECT_BINARY_DIR}/pybind11/pybind11 SYMBOLIC)
  add_library(cowlpython INTERFACE)
  target_include_directories(cowlpython SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/pybind11
                                                         ${Python_INCLUDE_DIRS})
  target_link_libraries(cowlpython INTERFACE ${Python_LIBRARIES})
  if(WIN32)
    # CPython's headers tell 64 bits from 32 by this, and find it out for one compiler alone.
    target_compile_definitions(cowlpython INTERFACE MS_WIN64)
  endif()
endif()
