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
    ${PROJECT_SOURCE_DIR}/tests/source_folder.cpp
    ${PROJECT_SOURCE_DIR}/tests/vector_file.cpp)
target_link_libraries(lum_test_main PUBLIC lum_compile GTest::gtest)
set_source_files_properties(${PROJECT_SOURCE_DIR}/tests/source_folder.cpp PROPERTIES
    COMPILE_DEFINITIONS LUM_SOURCE_FOLDER="${PROJECT_SOURCE_DIR}")
# What nearly every test includes takes longer to read than the test itself, so it is read once. The flags are those of
# the tests, or the compiler could not use it.
add_library(lum_test_precompiled OBJECT ${PROJECT_SOURCE_DIR}/tests/precompiled.cpp)
set_target_properties(lum_test_precompiled PROPERTIES POSITION_INDEPENDENT_CODE OFF)
target_link_libraries(lum_test_precompiled PRIVATE
    lum_test_main LUMFoundationObjects LUMPlatformObjects GTest::gtest GTest::gmock rapidcheck rapidcheck_gtest)
target_compile_options(lum_test_precompiled PRIVATE $<$<CONFIG:Debug>:-O0>)
target_precompile_headers(lum_test_precompiled PRIVATE
    <gmock/gmock.h> <gtest/gtest.h> <rapidcheck/gtest.h> <filesystem> <fstream> <functional> <random> <thread>)

add_custom_target(threaded_tests COMMENT "All tests with threads are built")

function(lum_add_test name)
    cmake_parse_arguments(arg "THREADS" "TIMEOUT" "SOURCES" ${ARGN})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE
        lum_test_main LUMFoundationObjects LUMPlatformObjects GTest::gtest GTest::gmock rapidcheck rapidcheck_gtest)
    target_precompile_headers(${name} REUSE_FROM lum_test_precompiled)
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    # Tests are compiled far more often than they run for long; what they test keeps its optimisation.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O0>)
    set(labels "")
    if(arg_THREADS)
        set(labels "threads")
        add_dependencies(threaded_tests ${name})
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${labels}")
endfunction()
