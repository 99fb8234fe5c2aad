# What every target of the project is compiled with: the warnings, and the instrumentation of the
# sanitizer and coverage builds.
add_library(kestrel_warnings INTERFACE)
add_library(kestrel_flags INTERFACE)
target_link_libraries(kestrel_flags INTERFACE kestrel_warnings)
target_compile_options(kestrel_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(kestrel_warnings INTERFACE -fcoroutines-ts -Wno-deprecated-experimental-coroutine)
endif()
target_compile_definitions(kestrel_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(KESTREL_SANITIZE)
    target_compile_options(kestrel_flags INTERFACE
        -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
if(KESTREL_COVERAGE)
    target_compile_options(kestrel_flags INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(kestrel_flags INTERFACE --coverage)
endif()

# kestrel_library(NAME USES target...): one static library for one folder. Only the folders that it
# uses are on its include path, so an include against the direction of the graph does not compile.
function(kestrel_library name)
    cmake_parse_arguments(ARG "" "" "USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    add_library(kestrel_${name} STATIC ${sources})
    target_include_directories(kestrel_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(kestrel_${name} PUBLIC ${ARG_USES} PRIVATE kestrel_flags)
endfunction()
