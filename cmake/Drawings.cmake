# The program's drawings are SVG files. They are read when it is built, so that no start has to.
set(folder ${CMAKE_CURRENT_LIST_DIR}/record-drawing)
if(CMAKE_CROSSCOMPILING)
    # For the build machine, with its own default compiler and none of the target's flags.
    include(ExternalProject)
    ExternalProject_Add(record-drawing-tool SOURCE_DIR ${folder}
        BINARY_DIR ${PROJECT_BINARY_DIR}/record-drawing
        CONFIGURE_COMMAND ${CMAKE_COMMAND} -E env --unset=CXX --unset=CXXFLAGS --unset=CPPFLAGS
            --unset=LDFLAGS ${CMAKE_COMMAND} -G ${CMAKE_GENERATOR} -S <SOURCE_DIR> -B <BINARY_DIR>
        BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> BUILD_ALWAYS ON INSTALL_COMMAND "" EXCLUDE_FROM_ALL ON
        BUILD_BYPRODUCTS <BINARY_DIR>/record-drawing)
    add_executable(record-drawing IMPORTED GLOBAL)
    set_target_properties(record-drawing PROPERTIES
        IMPORTED_LOCATION ${PROJECT_BINARY_DIR}/record-drawing/record-drawing)
    add_dependencies(record-drawing record-drawing-tool)
else()
    add_executable(record-drawing EXCLUDE_FROM_ALL ${folder}/RecordDrawing.cpp)
    target_link_libraries(record-drawing PRIVATE Qt6::Svg kestrel_plain_flags)
endif()

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
