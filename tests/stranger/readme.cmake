# Fails when README does not hold EXAMPLE line for line.
file(READ ${README} readme)
file(READ ${EXAMPLE} example)
string(FIND "${readme}" "${example}" at)
if(at EQUAL -1)
    message(FATAL_ERROR "${README} does not show ${EXAMPLE} as it stands")
endif()
