# Compiler settings of the whole tree. Warnings are errors in our own code; generated code is
# included as a system header and compiled without warnings (see HidlPackage.cmake).
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# -O3 takes a sixth longer to compile than -O2. It is kept for what a call runs through: the service, the
# runtime and the switchboard (qortv_optimise_fully).
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
function(qortv_optimise_fully target)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O3>)
endfunction()

set(QORTV_SANITIZE "" CACHE STRING "Sanitizers to compile with, as for -fsanitize= (empty: none)")

# The platform's library headers use GNU extensions, hence no -Wpedantic.
add_library(qortv_warnings INTERFACE)
target_compile_options(qortv_warnings INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Werror)

# Sanitizers report lines; full debugging information would double the time of compiling and linking.
# For a debugger, build with CXXFLAGS=-g.
if(QORTV_SANITIZE)
    add_compile_options(-fsanitize=${QORTV_SANITIZE} -fno-omit-frame-pointer -O1 -gline-tables-only)
    add_link_options(-fsanitize=${QORTV_SANITIZE} -fuse-ld=lld)
    if(QORTV_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

# The sources of a library are compiled several at a time: most of what a compiler reads is headers,
# and then it reads them once for all. Names in anonymous namespaces therefore have to differ within a
# room.
option(QORTV_UNITY "Compile the sources of a library together" ON)
set(CMAKE_UNITY_BUILD ${QORTV_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
if(QORTV_UNITY AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A class of a source may use its anonymous names, also where the source is included.
    target_compile_options(qortv_warnings INTERFACE -Wno-subobject-linkage)
endif()

# qortv_compile_quickly(TARGET...): for tests, on which the optimiser takes longer than they run.
function(qortv_compile_quickly)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE -O0)
    endforeach()
endfunction()

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
find_package(Threads REQUIRED)

# qortv_generated(NAME FILE...): lets the target `generated`, which compiles nothing, make the files,
# for tools that read the sources.
add_custom_target(generated)
function(qortv_generated name)
    string(MAKE_C_IDENTIFIER generate_${name} target)
    add_custom_target(${target} DEPENDS ${ARGN})
    add_dependencies(generated ${target})
endfunction()
