# The functions that the folders' CMakeLists.txt files are written with.
#
#   cowl_add_folder(FOLDER)                       enters a folder of the tree
#   cowl_add_library(T SOURCES .. LINK ..)        static library
#   cowl_add_program(T [GUI] SOURCES .. LINK ..)  executable of the product; GUI: no console on Windows
#   cowl_add_component(T SOURCES .. LINK .. [TEST])
#                                                 component library T.so or T.dll that exports
#                                                 EntryPoint alone; TEST: for tests, not staged
#   cowl_stage_file(FILE [TO SUBFOLDER])          file that goes beside the executable
#   cowl_add_test(T SOURCES .. LINK .. [THREADED] [STAGE] [NOMAIN] [SLOW])
#                                                 GoogleTest executable and its ctest entry;
#                                                 THREADED: runs under the thread sanitizer too;
#                                                 STAGE: runs the staged product or test components;
#                                                 NOMAIN: brings its own main; SLOW: runs for many
#                                                 seconds somewhere, and begins before the others
#   cowl_add_bench(T SOURCES .. LINK ..)          Google Benchmark executable, optimised native build
#
# What belongs to the product stands in COWL_STAGE_DIR and is run there; the target `stage` makes all
# of it. Component libraries made for tests stand in COWL_TESTLIBS_DIR; the target `testlibs`.
# The target `threaded_tests` makes what the thread sanitizer is for, `benches` all benchmarks.

set(COWL_STAGE_DIR ${PROJECT_BINARY_DIR}/stage)
set(COWL_TESTLIBS_DIR ${PROJECT_BINARY_DIR}/testlibs)
add_custom_target(stage)
add_custom_target(testlibs)
add_custom_target(threaded_tests)
add_custom_target(benches)

set(COWL_TEST_OPTIONS "" CACHE STRING "Compiler options of the tests' own sources, behind all others")

function(cowl_add_folder folder)
  add_subdirectory(${PROJECT_SOURCE_DIR}/${folder} ${PROJECT_BINARY_DIR}/${folder})
endfunction()

function(cowl_add_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
  cowl_check_arguments()
  add_library(${target} STATIC ${arg_SOURCES})
  target_link_libraries(${target} PUBLIC cowlflags ${arg_LINK})
endfunction()

function(cowl_add_program target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "GUI" "" "SOURCES;LINK")
  cowl_check_arguments()
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE cowlflags ${arg_LINK})
  set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ${arg_GUI}
                                             RUNTIME_OUTPUT_DIRECTORY ${COWL_STAGE_DIR})
  add_dependencies(stage ${target})
endfunction()

function(cowl_add_component target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "TEST" "" "SOURCES;LINK")
  cowl_check_arguments()
  add_library(${target} MODULE ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE cowlflags orobasictypes ${arg_LINK})
  if(arg_TEST)
    set(folder ${COWL_TESTLIBS_DIR})
    add_dependencies(testlibs ${target})
  else()
    set(folder ${COWL_STAGE_DIR})
    add_dependencies(stage ${target})
  endif()
  set_target_properties(${target} PROPERTIES PREFIX "" BUILD_RPATH "$ORIGIN"
                                             LIBRARY_OUTPUT_DIRECTORY ${folder})
  if(WIN32)
    target_link_options(${target} PRIVATE -Wl,--exclude-all-symbols)
  else()
    # Two modules must not share a variable: what is not named here stays inside the library.
    set(map ${PROJECT_SOURCE_DIR}/cmake/component.map)
    target_link_options(${target} PRIVATE -Wl,--version-script=${map} -Wl,-z,defs)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${map})
  endif()
endfunction()

function(cowl_stage_file file)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "TO" "")
  cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
  cmake_path(GET file FILENAME name)
  cmake_path(APPEND COWL_STAGE_DIR "${arg_TO}" "${name}" OUTPUT_VARIABLE staged)
  cmake_path(GET staged PARENT_PATH folder)
  add_custom_command(
    OUTPUT ${staged}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${CMAKE_COMMAND} -E copy ${file} ${staged}
    DEPENDS ${file}
    VERBATIM)
  string(MAKE_C_IDENTIFIER "stage_${arg_TO}_${name}" target)
  add_custom_target(${target} ALL DEPENDS ${staged})
  add_dependencies(stage ${target})
endfunction()

function(cowl_add_test target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "THREADED;STAGE;NOMAIN;SLOW" "" "SOURCES;LINK")
  cowl_check_arguments()
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE cowlflags ${arg_LINK} testsupport gmock)
  target_compile_options(${target} PRIVATE ${COWL_TEST_OPTIONS})
  if(NOT arg_NOMAIN)
    target_link_libraries(${target} PRIVATE gmock_main)
  endif()
  if(arg_STAGE)
    add_dependencies(${target} stage testlibs)
  endif()
  if(COWL_SANITIZE STREQUAL "thread" AND NOT arg_THREADED)
    set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()
  if(arg_THREADED)
    add_dependencies(threaded_tests ${target})
  endif()
  add_test(NAME ${target} COMMAND ${target})
  if(arg_SLOW)
    set_tests_properties(${target} PROPERTIES COST 100)
  endif()
  cowl_test_environment(${target})
endfunction()

# Sanitizers stop at the first finding; Wine has a prefix of its own and no display; the order of
# words is nobody's own.
function(cowl_test_environment test)
  set(environment
      "ASAN_OPTIONS=set:detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1:allocator_may_return_null=1"
      "LSAN_OPTIONS=set:suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
      "UBSAN_OPTIONS=set:print_stacktrace=1:halt_on_error=1"
      "TSAN_OPTIONS=set:halt_on_error=1:second_deadlock_stack=1"
      "LC_ALL=set:C.UTF-8")
  if(WIN32)
    set(environment "WINEPREFIX=set:${PROJECT_BINARY_DIR}/wine" "WINEDEBUG=set:-all"
                    "WINEDLLOVERRIDES=set:mscoree,mshtml=" "DISPLAY=unset:"
                    "LC_ALL=set:C.UTF-8")
    set_tests_properties(${test} PROPERTIES FIXTURES_REQUIRED wine_prefix)
  endif()
  set_tests_properties(${test} PROPERTIES TIMEOUT 600 ENVIRONMENT_MODIFICATION "${environment}")
endfunction()

function(cowl_add_bench target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
  cowl_check_arguments()
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE cowlflags ${arg_LINK} benchmark::benchmark)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
  add_dependencies(benches ${target})
endfunction()

# A misspelt keyword would otherwise be one more source or vanish.
macro(cowl_check_arguments)
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${target}: unknown arguments ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_SOURCES)
    message(FATAL_ERROR "${target}: no SOURCES")
  endif()
endmacro()
