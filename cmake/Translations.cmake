# lupdate collects the texts from the sources, lrelease compiles their translations. Without translations a
# build needs neither.
set(qt_tools ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
find_program(LUPDATE lupdate HINTS ${qt_tools})
find_program(LRELEASE lrelease HINTS ${qt_tools})

if(LUPDATE)
    add_custom_target(translation-template
        COMMAND ${CMAKE_COMMAND} -E env LUPDATE=${LUPDATE} ${PROJECT_SOURCE_DIR}/translations/update
        COMMENT "Collecting the texts to be translated" VERBATIM)
endif()

# kestrel_translations(TARGET file...): compiles the translations, NAME_xx.ts each, into the target, where
# they are resources: ":/translations/NAME_xx.qm".
function(kestrel_translations target)
    if(NOT ARGN)
        return()
    endif()
    if(NOT LRELEASE)
        message(FATAL_ERROR "The translations take lrelease, from the package qt6-l10n-tools.")
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
