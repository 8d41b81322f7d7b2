# The power routines (internal: linked from the internal archive).
add_executable(pxkcc_power_test ${CMAKE_CURRENT_LIST_DIR}/power_test.cpp)
target_link_libraries(pxkcc_power_test PRIVATE pxkcc_internal pxkcc_test_support GTest::gtest_main)
gtest_discover_tests(pxkcc_power_test DISCOVERY_TIMEOUT 60)

# The gamma members: tables (8u, 16u) and the float curve (32f).
pxkcc_add_test(pxkcc_gamma_table_test ${CMAKE_CURRENT_LIST_DIR}/gamma_table_test.cpp)
pxkcc_add_test(pxkcc_gamma_float_test ${CMAKE_CURRENT_LIST_DIR}/gamma_float_test.cpp)
