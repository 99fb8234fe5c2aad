find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
find_path(WAYLAND_PROTOCOLS unstable/xdg-foreign/xdg-foreign-unstable-v2.xml
    PATH_SUFFIXES share/wayland-protocols REQUIRED)

# kestrel_wayland_protocols(TARGET protocol...): a static library with the client's bindings of each protocol, a file
# of the package wayland-protocols without its extension; for unstable/a/b, the header is <b-client.h>. They are
# generated with the build system, so that clang-tidy needs no build.
function(kestrel_wayland_protocols target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
    file(MAKE_DIRECTORY ${folder})
    foreach(protocol IN LISTS ARGN)
        set(definition ${WAYLAND_PROTOCOLS}/${protocol}.xml)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${definition})
        cmake_path(GET protocol FILENAME name)
        set(files ${name}-client.h ${name}.c)
        set(kinds client-header private-code)
        foreach(file kind IN ZIP_LISTS files kinds)
            execute_process(COMMAND ${WAYLAND_SCANNER} ${kind} ${definition} ${folder}.generated
                COMMAND_ERROR_IS_FATAL ANY)
            file(COPY_FILE ${folder}.generated ${folder}/${file} ONLY_IF_DIFFERENT)
        endforeach()
        # The tables are C; as C++, they take their external linkage from the header.
        string(APPEND source "#include <${name}-client.h>\n#include <${name}.c>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${folder}/${target}.cpp CONTENT "${source}")
    add_library(${target} STATIC ${folder}/${target}.cpp)
    target_include_directories(${target} SYSTEM PUBLIC ${folder})
    target_link_libraries(${target} PUBLIC wayland-client PRIVATE kestrel_flags)
endfunction()
