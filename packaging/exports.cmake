# Writes EXPORTS, the module definition of a DLL, from the functions in LIBRARY that packaging/zephlinksdk.map exports
# elsewhere.
execute_process(COMMAND ${NM} --defined-only --extern-only ${LIBRARY} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL " T ZephlinkSDK_[a-z][A-Za-z0-9_]*" functions "${symbols}")
list(TRANSFORM functions REPLACE " T " "  ")
list(SORT functions)
list(JOIN functions "\n" functions)
file(WRITE ${EXPORTS} "EXPORTS\n${functions}\n")
