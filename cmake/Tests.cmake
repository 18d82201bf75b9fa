# Unit test programs.
#
#   qortv_test(NAME SOURCES file... [LIBRARIES target...] [LABELS label...] [PREFIX text])
#
# A GoogleTest program whose tests ctest knows by their names, PREFIX in front. Those labelled `tsan` are also
# built and run with the thread sanitizer: target tsan_tests builds them.
find_package(GTest REQUIRED)

# Seconds after which ctest ends a test that hangs. Tests find hangs themselves and say what did not happen; this
# is for those that cannot, and far more than the longest test needs on a slow and busy machine.
set(QORTV_TEST_TIMEOUT 1800)

include(GoogleTest)
add_custom_target(tsan_tests)

function(qortv_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABELS;PREFIX" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main qortv_warnings)
    qortv_compile_quickly(${name})
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
    gtest_discover_tests(${name} TEST_PREFIX "${arg_PREFIX}" NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60
                         PROPERTIES TIMEOUT ${QORTV_TEST_TIMEOUT} LABELS "${arg_LABELS}")
    if("tsan" IN_LIST arg_LABELS)
        add_dependencies(tsan_tests ${name})
    endif()
endfunction()
