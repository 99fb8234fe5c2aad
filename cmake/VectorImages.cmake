# The program's images are SVG files, converted to QPicture files at build time so that no start has to parse them.
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
    add_executable(svg-to-picture EXCLUDE_FROM_ALL ${folder}/SvgToPicture.cpp)
    target_link_libraries(svg-to-picture PRIVATE Qt6::Svg kestrel_plain_flags)
endif()

# kestrel_vector_images(TARGET file...): converts each image, NAME.svg, into a resource of the target,
# ":/images/NAME.pic".
function(kestrel_vector_images target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/images)
    foreach(source IN LISTS ARGN)
        cmake_path(GET source STEM LAST_ONLY name)
        add_custom_command(OUTPUT ${folder}/${name}.pic DEPENDS ${source} svg-to-picture
            COMMAND svg-to-picture ${source} ${folder}/${name}.pic VERBATIM)
        list(APPEND all ${folder}/${name}.pic)
    endforeach()
    file(MAKE_DIRECTORY ${folder})
    # Uncompressed: they are too small to be worth the memory that decompression takes.
    qt_add_resources(${target} ${target}_images PREFIX /images BASE ${folder} FILES ${all}
        OPTIONS -no-compress)
endfunction()
