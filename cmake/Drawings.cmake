# The program's drawings are SVG files. They are read when it is built, so that no start has to.
add_executable(record-drawing EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/RecordDrawing.cpp)
target_link_libraries(record-drawing PRIVATE Qt6::Svg kestrel_plain_flags)

# kestrel_drawings(TARGET file...): records the drawings, NAME.svg each, into the target, where they are
# resources: ":/drawings/NAME.pic".
function(kestrel_drawings target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/drawings)
    foreach(source IN LISTS ARGN)
        cmake_path(GET source STEM LAST_ONLY name)
        add_custom_command(OUTPUT ${folder}/${name}.pic DEPENDS ${source} record-drawing
            COMMAND record-drawing ${source} ${folder}/${name}.pic VERBATIM)
        list(APPEND all ${folder}/${name}.pic)
    endforeach()
    file(MAKE_DIRECTORY ${folder})
    # They are too small to pay for the memory that unpacking takes.
    qt_add_resources(${target} ${target}_drawings PREFIX /drawings BASE ${folder} FILES ${all}
        OPTIONS -no-compress)
endfunction()
