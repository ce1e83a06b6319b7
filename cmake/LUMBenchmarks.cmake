# lum_add_benchmark(<name> <sources>... [PEERS libdeflate libplist boost qt gnustep])
#
# One Google Benchmark executable; benchmarks/README.md says how its rows are named. A peer that is there is linked, with
# LUM_PEER_QT and so on defined; one that is not drops its rows, and benchmarks/run tells so. Sources in Objective-C++
# (.mm) are built only with the peer gnustep.
find_package(benchmark REQUIRED)
find_package(Boost QUIET)
find_package(Qt6 QUIET COMPONENTS Core)
pkg_check_modules(LIBDEFLATE QUIET IMPORTED_TARGET libdeflate)
pkg_check_modules(LIBPLIST QUIET IMPORTED_TARGET libplist-2.0)

set(LUM_PEER_boost Boost::headers)
set(LUM_PEER_qt Qt6::Core)
set(LUM_PEER_libdeflate PkgConfig::LIBDEFLATE)
set(LUM_PEER_libplist PkgConfig::LIBPLIST)
set(LUM_PEER_gnustep lum_gnustep)

find_program(GNUSTEP_CONFIG gnustep-config)
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER}) # the runtime in the distribution is that of g++
include(CheckLanguage)
check_language(OBJCXX)
if(GNUSTEP_CONFIG AND CMAKE_OBJCXX_COMPILER)
    enable_language(OBJCXX)
    set(CMAKE_OBJCXX_STANDARD 20)
    execute_process(COMMAND ${GNUSTEP_CONFIG} --objc-flags OUTPUT_VARIABLE gnustep_flags)
    string(REGEX MATCHALL "-I/[^ ]+" gnustep_includes "${gnustep_flags}")
    list(TRANSFORM gnustep_includes REPLACE "^-I" "")
    execute_process(COMMAND ${GNUSTEP_CONFIG} --base-libs OUTPUT_VARIABLE gnustep_libraries)
    separate_arguments(gnustep_libraries UNIX_COMMAND "${gnustep_libraries}")
    add_library(lum_gnustep INTERFACE)
    set(objcxx $<COMPILE_LANGUAGE:OBJCXX>)
    target_compile_options(lum_gnustep INTERFACE
        $<${objcxx}:-fobjc-exceptions> $<${objcxx}:-fconstant-string-class=NSConstantString> $<${objcxx}:-Wno-error>)
    target_compile_definitions(lum_gnustep INTERFACE
        $<${objcxx}:GNUSTEP> $<${objcxx}:GNUSTEP_BASE_LIBRARY=1> $<${objcxx}:GNU_RUNTIME=1>
        $<${objcxx}:_NATIVE_OBJC_EXCEPTIONS>)
    target_include_directories(lum_gnustep SYSTEM INTERFACE ${gnustep_includes})
    target_link_libraries(lum_gnustep INTERFACE ${gnustep_libraries})
endif()

file(WRITE ${PROJECT_BINARY_DIR}/benchmarks/missing_peers.txt "")

function(lum_add_benchmark name)
    cmake_parse_arguments(arg "" "" "PEERS" ${ARGN})
    set(sources ${arg_UNPARSED_ARGUMENTS})
    if(NOT TARGET lum_gnustep)
        list(FILTER sources EXCLUDE REGEX "\\.mm$")
    endif()
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE
        lum_compile LUMFoundationObjects LUMPlatformObjects benchmark::benchmark benchmark::benchmark_main)
    foreach(peer IN LISTS arg_PEERS)
        string(TOUPPER ${peer} upper)
        if(TARGET ${LUM_PEER_${peer}})
            target_link_libraries(${name} PRIVATE ${LUM_PEER_${peer}})
            target_compile_definitions(${name} PRIVATE LUM_PEER_${upper}=1)
        else()
            file(APPEND ${PROJECT_BINARY_DIR}/benchmarks/missing_peers.txt "${peer}\n")
        endif()
    endforeach()
endfunction()
