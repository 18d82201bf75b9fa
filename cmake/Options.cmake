# Compiler settings of the whole tree. Warnings are errors in our own code; generated code is
# included as a system header and compiled without warnings (see HidlPackage.cmake).
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

set(QORTV_SANITIZE "" CACHE STRING "Sanitizers to compile with, as for -fsanitize= (empty: none)")

# The platform's library headers use GNU extensions, hence no -Wpedantic.
add_library(qortv_warnings INTERFACE)
target_compile_options(qortv_warnings INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Werror)

if(QORTV_SANITIZE)
    add_compile_options(-fsanitize=${QORTV_SANITIZE} -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=${QORTV_SANITIZE})
    if(QORTV_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
find_package(Threads REQUIRED)
