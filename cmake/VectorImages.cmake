# The program's images are SVG files, converted to QPicture files and rendered in the usual sizes at build time, so
# that no start has to parse them or to paint their paths.
set(folder ${CMAKE_CURRENT_LIST_DIR}/svg-to-picture)
if(CMAKE_CROSSCOMPILING)
    # The tool runs on the build machine: its default compiler, without the target's flags.
    include(ExternalProject)
    ExternalProject_Add(svg-to-picture-tool SOURCE_DIR ${folder}
        BINARY_DIR ${PROJECT_BINARY_DIR}/svg-to-picture
        CONFIGURE_COMMAND ${CMAKE_COMMAND} -E env --unset=CXX --unset=CXXFLAGS --unset=CPPFLAGS
            --unset=LDFLAGS ${CMAKE_COMMAND} -G ${CMAKE_GENERATOR} -S <SOURCE_DIR> -B <BINARY_DIR>
        BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> BUILD_ALWAYS ON INSTALL_COMMAND "" EXCLUDE_FROM_ALL ON
        BUILD_BYPRODUCTS <BINARY_DIR>/svg-to-picture)
    add_executable(svg-to-picture IMPORTED GLOBAL)
    set_target_properties(svg-to-picture PROPERTIES
        IMPORTED_LOCATION ${PROJECT_BINARY_DIR}/svg-to-picture/svg-to-picture)
    add_dependencies(svg-to-picture svg-to-picture-tool)
else()
    set(rendering ${PROJECT_SOURCE_DIR}/ui/theme)
    add_executable(svg-to-picture EXCLUDE_FROM_ALL ${folder}/SvgToPicture.cpp ${rendering}/PictureRendering.cpp)
    target_include_directories(svg-to-picture PRIVATE ${rendering})
    target_link_libraries(svg-to-picture PRIVATE Qt6::Svg kestrel_plain_flags)
endif()

# kestrel_vector_images(TARGET pixels|mask SIDES side... IMAGES file...): converts each image, NAME.svg, into two
# resources of the target: ":/images/NAME.pic", and ":/images/NAME.pixels" or ":/images/NAME.mask", in these sizes.
function(kestrel_vector_images target rendering)
    cmake_parse_arguments(ARG "" "" "SIDES;IMAGES" ${ARGN})
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/images)
    foreach(source IN LISTS ARG_IMAGES)
        cmake_path(GET source STEM LAST_ONLY name)
        set(outputs ${folder}/${name}.pic ${folder}/${name}.${rendering})
        add_custom_command(OUTPUT ${outputs} DEPENDS ${source} svg-to-picture
            COMMAND svg-to-picture ${source} ${outputs} ${rendering} ${ARG_SIDES} VERBATIM)
        list(APPEND all ${outputs})
    endforeach()
    file(MAKE_DIRECTORY ${folder})
    # Uncompressed: a start reads few of them, and decompression takes more memory than they do.
    qt_add_resources(${target} ${target}_images PREFIX /images BASE ${folder} FILES ${all}
        OPTIONS -no-compress)
endfunction()
