# GoogleTest and GoogleMock from the distribution's source package, built with this tree's flags:
# the packaged libraries fit neither the cross build nor the sanitizers.

set(COWL_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest and GoogleMock")
if(NOT EXISTS ${COWL_GOOGLETEST_DIR}/googlemock/src/gmock-all.cc)
  message(FATAL_ERROR "No GoogleTest sources in ${COWL_GOOGLETEST_DIR}: install the package "
                      "'googletest' (./dev setup does), or set COWL_GOOGLETEST_DIR.")
endif()

set(parts ${COWL_GOOGLETEST_DIR}/googletest ${COWL_GOOGLETEST_DIR}/googlemock)
add_library(gmock STATIC ${COWL_GOOGLETEST_DIR}/googletest/src/gtest-all.cc
                         ${COWL_GOOGLETEST_DIR}/googlemock/src/gmock-all.cc)
target_include_directories(gmock PRIVATE ${parts})
target_include_directories(gmock SYSTEM PUBLIC ${COWL_GOOGLETEST_DIR}/googletest/include
                                               ${COWL_GOOGLETEST_DIR}/googlemock/include)
target_link_libraries(gmock PUBLIC Threads::Threads)

add_library(gmock_main STATIC ${COWL_GOOGLETEST_DIR}/googlemock/src/gmock_main.cc)
target_link_libraries(gmock_main PUBLIC gmock)
