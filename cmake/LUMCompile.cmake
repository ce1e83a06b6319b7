# How everything in this tree is compiled: language level, visibility, warnings, sanitizers.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(lum_compile INTERFACE)
target_compile_options(lum_compile INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety -Wno-gnu-zero-variadic-macro-arguments>
    # g++ 12 takes the appending of short strings for overlapping copies when it optimises.
    $<$<AND:$<COMPILE_LANG_AND_ID:CXX,GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
    $<$<BOOL:${LUM_WARNINGS_AS_ERRORS}>:-Werror>)
if(LUM_SANITIZE)
    target_compile_options(lum_compile INTERFACE
        -fsanitize=${LUM_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(lum_compile INTERFACE -fsanitize=${LUM_SANITIZE})
    if(LUM_SANITIZE MATCHES "undefined")
        # This check opens a pipe to look at memory, and takes every object for a bad one in the tests that leave
        # the process no descriptor.
        target_compile_options(lum_compile INTERFACE -fno-sanitize=vptr)
    endif()
endif()
target_compile_definitions(lum_compile INTERFACE $<$<BOOL:${LUM_COUNT_OBJECTS}>:NS_COUNT_OBJECTS>)
target_include_directories(lum_compile INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)

function(lum_configure_objects target)
    target_link_libraries(${target} PUBLIC $<BUILD_INTERFACE:lum_compile>)
endfunction()
