# The two shared libraries, made from the same objects that the tests link.
add_library(LUMPlatform SHARED $<TARGET_OBJECTS:LUMPlatformObjects>)
target_link_libraries(LUMPlatform PRIVATE ${LUM_PLATFORM_LIBRARIES} $<BUILD_INTERFACE:lum_compile>)

add_library(LUMFoundation SHARED $<TARGET_OBJECTS:LUMFoundationObjects>)
target_link_libraries(LUMFoundation
    PUBLIC LUMPlatform
    PRIVATE ${LUM_FOUNDATION_LIBRARIES} $<BUILD_INTERFACE:lum_compile>)

foreach(library LUMPlatform LUMFoundation)
    set_target_properties(${library} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        INSTALL_RPATH $ORIGIN)
    if(NOT LUM_SANITIZE) # whose runtime is in the program alone
        target_link_options(${library} PRIVATE LINKER:--no-undefined)
    endif()
    target_include_directories(${library} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(${library} PUBLIC cxx_std_20)
endforeach()
add_library(LUMFoundation::LUMPlatform ALIAS LUMPlatform)
add_library(LUMFoundation::LUMFoundation ALIAS LUMFoundation)
