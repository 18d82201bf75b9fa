# A room: a library whose headers are included with the room's path, and which sees no other headers
# of the tree than those of the rooms that it links.
#
#   qortv_room(TARGET PATH path [TYPE STATIC|OBJECT] [SOURCES file...] [HEADERS file...]
#              [ROOMS target...] [LIBRARIES target...] [PRIVATE target...])
#
# PATH       how the room's headers are included: "television/stream" for
#            #include "television/stream/packet_reader.h"; its last part is this source folder
# HEADERS    the headers to show, where rooms lie below this folder; all of the folder otherwise
# ROOMS      the rooms that this one stands on; whoever links this room sees their headers too
# LIBRARIES  other libraries that the room's headers use; PRIVATE: those that only its sources use
#
# Each room has an include folder of its own in the build tree that holds nothing but a link to the
# source folder: an include against the arrows does not compile.
function(qortv_room target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PATH;TYPE" "SOURCES;HEADERS;ROOMS;LIBRARIES;PRIVATE")
    if(NOT arg_PATH OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "qortv_room(TARGET PATH path ...): ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_TYPE)
        set(arg_TYPE STATIC)
    endif()
    set(root ${CMAKE_BINARY_DIR}/rooms/${target})
    if(arg_HEADERS)
        file(MAKE_DIRECTORY ${root}/${arg_PATH})
        foreach(header IN LISTS arg_HEADERS)
            file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${root}/${arg_PATH}/${header} SYMBOLIC)
        endforeach()
    else()
        get_filename_component(parent ${root}/${arg_PATH} DIRECTORY)
        file(MAKE_DIRECTORY ${parent})
        file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${arg_PATH} SYMBOLIC)
    endif()
    if(arg_SOURCES)
        add_library(${target} ${arg_TYPE} ${arg_SOURCES})
        target_include_directories(${target} PUBLIC ${root})
        target_link_libraries(${target} PUBLIC ${arg_ROOMS} ${arg_LIBRARIES} PRIVATE ${arg_PRIVATE} qortv_warnings)
    else()
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE ${root})
        target_link_libraries(${target} INTERFACE ${arg_ROOMS} ${arg_LIBRARIES})
    endif()
endfunction()
