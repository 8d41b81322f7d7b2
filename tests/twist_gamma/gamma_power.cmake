# The power routines (internal: linked from the internal archive).
add_executable(pxkcc_power_test ${CMAKE_CURRENT_LIST_DIR}/power_test.cpp)
target_link_libraries(pxkcc_power_test PRIVATE pxkcc_internal pxkcc_test_support GTest::gtest_main)
gtest_discover_tests(pxkcc_power_test DISCOVERY_TIMEOUT 60)
