# Target lone_headers: every header of the tree compiled by itself, included twice (tools/check_headers).
execute_process(COMMAND ${PROJECT_SOURCE_DIR}/tools/sources h OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n" ";" headers "${headers}")
set(sources)
foreach(header ${headers})
    set(source ${PROJECT_BINARY_DIR}/lone_headers/${header}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n#include \"${header}\" // twice\n")
    list(APPEND sources ${source})
endforeach()
add_library(lone_headers OBJECT EXCLUDE_FROM_ALL ${sources})
target_link_libraries(lone_headers PRIVATE
    lum_compile LUMFoundationObjects LUMPlatformObjects GTest::gtest GTest::gmock rapidcheck rapidcheck_gtest)
target_compile_options(lone_headers PRIVATE -O0 -g0)
