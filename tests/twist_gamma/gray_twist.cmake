# Gray conversions and the colour twist.
pxkcc_add_test(pxkcc_gray_reduce_test ${CMAKE_CURRENT_LIST_DIR}/gray_reduce_test.cpp)
pxkcc_add_test(pxkcc_gray_expand_test ${CMAKE_CURRENT_LIST_DIR}/gray_expand_test.cpp)
pxkcc_add_test(pxkcc_color_twist_test ${CMAKE_CURRENT_LIST_DIR}/color_twist_test.cpp)
