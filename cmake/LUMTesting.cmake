# lum_add_test(<name> SOURCES a_test.cpp ... [THREADS] [TIMEOUT seconds])
#
# One GoogleTest executable. THREADS puts its cases among those that run under the thread sanitizer.
# The tests link the very objects the shared libraries are made of, so they see internals without exporting them.
find_package(GTest REQUIRED)
find_package(rapidcheck REQUIRED)
include(GoogleTest)

add_library(lum_test_main STATIC
    ${PROJECT_SOURCE_DIR}/tests/german_locale.cpp
    ${PROJECT_SOURCE_DIR}/tests/main.cpp
    ${PROJECT_SOURCE_DIR}/tests/vector_file.cpp)
target_link_libraries(lum_test_main PUBLIC lum_compile GTest::gtest)
target_compile_definitions(lum_test_main PUBLIC LUM_TEST_DATA="${PROJECT_SOURCE_DIR}/tests")
add_custom_target(threaded_tests COMMENT "All tests with threads are built")

function(lum_add_test name)
    cmake_parse_arguments(arg "THREADS" "TIMEOUT" "SOURCES" ${ARGN})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE
        lum_test_main LUMFoundationObjects LUMPlatformObjects GTest::gtest GTest::gmock rapidcheck rapidcheck_gtest)
    # Tests are compiled far more often than they run for long; what they test keeps its optimisation.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O0>)
    set(labels "")
    if(arg_THREADS)
        set(labels "threads")
        add_dependencies(threaded_tests ${name})
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${labels}")
endfunction()
