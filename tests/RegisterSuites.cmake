# Writes a file for ctest to include: one entry, and so one process, for each suite of a test program, and one for
# the whole program with its tests shuffled, to find tests that depend on others.
# Called with PROGRAM, FILE, FOLDER, LABEL, TIMEOUT and ENVIRONMENT.
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
# A suite is not indented and ends with a dot, which a type parameter may follow.
string(REGEX MATCHALL "(^|\n)[A-Z][A-Za-z0-9_/]*\\." suites "${listing}")
if(NOT suites)
    message(FATAL_ERROR "${PROGRAM} lists no tests")
endif()
set(entries "")
function(register name label)
    list(JOIN ARGN "]==] [==[" arguments)
    string(APPEND entries "add_test([==[${name}]==] [==[${PROGRAM}]==] [==[${arguments}]==])\n"
        "set_tests_properties([==[${name}]==] PROPERTIES WORKING_DIRECTORY [==[${FOLDER}]==] LABELS ${label}"
        " TIMEOUT ${TIMEOUT} ENVIRONMENT [==[${ENVIRONMENT}]==]"
        " SKIP_REGULAR_EXPRESSION [==[\\[  SKIPPED \\]]==]"
        # Serial, as a display has one keyboard focus; COST starts them first, so that none runs alone at the end.
        " RESOURCE_LOCK display COST 1000)\n")
    set(entries "${entries}" PARENT_SCOPE)
endfunction()
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "[\n.]" "" suite "${suite}")
    register(${suite} ${LABEL} --gtest_filter=${suite}.*)
endforeach()
cmake_path(GET PROGRAM FILENAME program_name)
register(${program_name}.in-another-order ${LABEL}-long --gtest_shuffle --gtest_random_seed=4)
file(WRITE ${FILE} "${entries}")
