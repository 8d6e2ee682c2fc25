# Writes HEADER with the commit of the sources in SOURCE, "unknown" without git; touches it only
# where that changed. "+" says that something was not committed.
find_program(git NAMES git)
set(commit unknown)
if(git AND EXISTS ${SOURCE}/.git)
    execute_process(COMMAND ${git} describe --always --exclude=* --abbrev=8 --dirty=+
                    WORKING_DIRECTORY ${SOURCE} RESULT_VARIABLE failed OUTPUT_VARIABLE text
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT failed)
        set(commit ${text})
    endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT "#define ORVA_COMMIT \"${commit}\"\n")
