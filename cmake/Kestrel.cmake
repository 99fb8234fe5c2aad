# Warnings are errors with compilers up to these versions, which the project has been built with. A newer one may
# have new warnings.
set(newest_GNU 16)
set(newest_Clang 21)
if(CMAKE_COMPILE_WARNING_AS_ERROR AND
        CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL "${newest_${CMAKE_CXX_COMPILER_ID}}.999")
    message(STATUS "Warnings are no errors: ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} is newer than known")
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
endif()

# kestrel_plain_flags: warnings and hardening, in every build. kestrel_flags, for all targets of the project, adds
# the instrumentation of the sanitizer, fuzz and coverage builds.
add_library(kestrel_plain_flags INTERFACE)
add_library(kestrel_flags INTERFACE)
target_link_libraries(kestrel_flags INTERFACE kestrel_plain_flags)
target_compile_options(kestrel_plain_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2)
# Until clang 15, coroutines with libstdc++ need a flag, which clang 17 no longer knows.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 15)
    target_compile_options(kestrel_plain_flags INTERFACE
        -fcoroutines-ts -Wno-deprecated-experimental-coroutine)
endif()
# Qt 6.8 and 6.11 have another name for the last of these and take this one too; Qt 6.4 knows only this one.
target_compile_definitions(kestrel_plain_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# 64-bit off_t, ino_t and time_t on 32-bit systems too, where calls would otherwise fail with EOVERFLOW.
target_compile_definitions(kestrel_plain_flags INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)

# Hardening: memory errors abort the program before they can be exploited. _FORTIFY_SOURCE needs optimisation.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
target_compile_definitions(kestrel_plain_flags INTERFACE _GLIBCXX_ASSERTIONS)
target_compile_options(kestrel_plain_flags INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -fstack-protector-strong
    -fstack-clash-protection>)
# Only some architectures have it.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection=full KESTREL_HAS_CONTROL_FLOW_PROTECTION)
if(KESTREL_HAS_CONTROL_FLOW_PROTECTION)
    target_compile_options(kestrel_plain_flags INTERFACE $<$<NOT:$<CONFIG:Debug>>:-fcf-protection=full>)
endif()
target_link_options(kestrel_plain_flags INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:LINKER:-z,relro,-z,now,-z,noexecstack>)
# Otherwise relative relocations are a tenth of the executable, and are read at every start.
include(CheckLinkerFlag)
check_linker_flag(CXX LINKER:-z,pack-relative-relocs KESTREL_PACKS_RELOCATIONS)
if(KESTREL_PACKS_RELOCATIONS)
    target_link_options(kestrel_plain_flags INTERFACE
        $<$<NOT:$<CONFIG:Debug>>:LINKER:-z,pack-relative-relocs>)
endif()

if(KESTREL_SANITIZE)
    target_compile_options(kestrel_flags INTERFACE
        -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
# For programs. The dynamic linker looks for each of some 12,000 symbols in the libraries in the order in which the
# executable names them, so those that define most symbols come first. (A sanitizer's runtime must be the first.)
add_library(kestrel_load_order INTERFACE)
if(NOT KESTREL_SANITIZE)
    target_link_options(kestrel_load_order INTERFACE LINKER:--push-state,--no-as-needed
        $<TARGET_FILE:Qt6::Core> $<TARGET_FILE:Qt6::Gui> $<TARGET_FILE:Qt6::Widgets> -lstdc++
        LINKER:--pop-state)
endif()
# For programs in which Qt starts threads.
add_library(kestrel_qt_threads INTERFACE)
if(KESTREL_SANITIZE STREQUAL "thread")
    target_sources(kestrel_qt_threads INTERFACE ${CMAKE_CURRENT_LIST_DIR}/QtThreads.cpp)
endif()
if(KESTREL_FUZZ)
    # Without libFuzzer's main(), which only the harnesses link.
    target_compile_options(kestrel_flags INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(kestrel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(KESTREL_COVERAGE)
    target_compile_options(kestrel_flags INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(kestrel_flags INTERFACE --coverage)
endif()

# kestrel_library(NAME PUBLIC target... PRIVATE target...): one static library for one folder. PUBLIC are the
# folders that its headers include, PRIVATE those that only its sources include. No other folder is on its
# include path, so an include against the dependency graph does not compile.
function(kestrel_library name)
    cmake_parse_arguments(ARG "" "" "PUBLIC;PRIVATE" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    add_library(kestrel_${name} STATIC ${sources})
    target_include_directories(kestrel_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(kestrel_${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} kestrel_flags)
endfunction()
