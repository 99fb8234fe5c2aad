# Writes the file that ctest includes: one entry for each suite of a test program, which runs in one process.
# Called with PROGRAM, FILE, FOLDER, LABEL, TIMEOUT and ENVIRONMENT.
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
# A suite is not indented and ends with a dot; what it is instantiated with may follow.
string(REGEX MATCHALL "(^|\n)[A-Z][A-Za-z0-9_/]*\\." suites "${listing}")
if(NOT suites)
    message(FATAL_ERROR "${PROGRAM} lists no tests")
endif()
set(entries "")
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "[\n.]" "" suite "${suite}")
    string(APPEND entries "add_test([==[${suite}]==] [==[${PROGRAM}]==] [==[--gtest_filter=${suite}.*]==])\n"
        "set_tests_properties([==[${suite}]==] PROPERTIES WORKING_DIRECTORY [==[${FOLDER}]==] LABELS ${LABEL}"
        " TIMEOUT ${TIMEOUT} ENVIRONMENT [==[${ENVIRONMENT}]==]"
        " SKIP_REGULAR_EXPRESSION [==[\\[  SKIPPED \\]]==]"
        # One display has one keyboard focus. They start first, so that none is left to run alone at the end.
        " RESOURCE_LOCK display COST 1000)\n")
endforeach()
file(WRITE ${FILE} "${entries}")
