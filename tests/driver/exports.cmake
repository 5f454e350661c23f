# Compares the symbols that the library defines for others with the list.
execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+(\n|$)" names "${symbols}")
string(REPLACE "\n" "" names "${names}")
list(SORT names)
if(NOT names STREQUAL "Check;Convert")
    message(FATAL_ERROR "exported: ${names}")
endif()
