# lupdate extracts the texts from the sources, lrelease compiles the translations. A build without translations
# needs neither.
set(qt_tools ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
find_program(LUPDATE lupdate HINTS ${qt_tools})
find_program(LRELEASE lrelease HINTS ${qt_tools})

if(LUPDATE)
    add_custom_target(translation-template
        COMMAND ${CMAKE_COMMAND} -E env LUPDATE=${LUPDATE} ${PROJECT_SOURCE_DIR}/translations/update
        COMMENT "Extracting the translatable texts" VERBATIM)
endif()

# kestrel_translations(TARGET file...): compiles each translation, NAME_xx.ts, into a resource of the target,
# ":/translations/NAME_xx.qm".
function(kestrel_translations target)
    if(NOT ARGN)
        return()
    endif()
    if(NOT LRELEASE)
        message(FATAL_ERROR "The translations need lrelease, from the package qt6-l10n-tools.")
    endif()
    foreach(source IN LISTS ARGN)
        cmake_path(GET source STEM name)
        set(compiled ${CMAKE_CURRENT_BINARY_DIR}/translations/${name}.qm)
        add_custom_command(OUTPUT ${compiled} DEPENDS ${source}
            COMMAND ${LRELEASE} -silent ${source} -qm ${compiled} VERBATIM)
        list(APPEND all ${compiled})
    endforeach()
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/translations)
    qt_add_resources(${target} translations PREFIX /translations
        BASE ${CMAKE_CURRENT_BINARY_DIR}/translations FILES ${all})
endfunction()
