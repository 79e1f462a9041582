# Fails when one of FILES asks the system for anything that talks to another machine.
list(REMOVE_ITEM FILES "")
foreach(file IN LISTS FILES)
    execute_process(COMMAND ${NM} -D --undefined-only ${file} OUTPUT_VARIABLE wanted COMMAND_ERROR_IS_FATAL ANY)
    if(NOT wanted MATCHES " U [_a-z]*open[_0-9a-z]*[@\n]")
        message(FATAL_ERROR "${file} is not read: it asks for no file either")
    endif()
    string(REGEX MATCHALL " (socket|socketpair|connect|bind|listen|accept4?|send(to|msg|mmsg)?|recv(from|msg|mmsg)?|\
get(host|addr|name|serv)(info|by)[a-z_]*|res_[a-z]+|g_(socket|network|resolver|tcp)_[a-z_]+|xmlNano[A-Za-z]+|curl_[a-z_]+)[@\n]"
        network "${wanted}")
    if(network)
        message(FATAL_ERROR "${file} asks for the network:${network}")
    endif()
endforeach()
