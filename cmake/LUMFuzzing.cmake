# lum_add_fuzzer(<name> <sources>...)
#
# A reader of bytes under libFuzzer, with its corpus in fuzz/corpus/<name>. In the fuzz preset this is a fuzzer for
# fuzz/run; among the tests it is a program that reads the corpus once.
if(NOT LUM_BUILD_FUZZERS)
    add_library(lum_read_corpus OBJECT ${PROJECT_SOURCE_DIR}/fuzz/read_corpus.cpp)
    target_link_libraries(lum_read_corpus PUBLIC lum_compile)
endif()

function(lum_add_fuzzer name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE lum_compile LUMFoundationObjects LUMPlatformObjects)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzzers)
    if(LUM_BUILD_FUZZERS)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    else()
        target_link_libraries(${name} PRIVATE lum_read_corpus)
        add_test(NAME fuzz.${name} COMMAND ${name} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
        set_tests_properties(fuzz.${name} PROPERTIES TIMEOUT 120)
    endif()
endfunction()
