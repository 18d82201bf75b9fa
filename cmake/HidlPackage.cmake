# Compiles packages of .hal files at build time with the platform's own compiler.
#
#   hidl_add_package(TARGET PACKAGE name@major.minor ROOT folder [DEPENDS target...])
#
# TARGET   static library of the generated stubs and proxies; its generated headers are system
#          headers for who links it, so that they cause no warnings there
# PACKAGE  full name of the package, for example vendor.corvanta.tv.qortvapi@1.0
# ROOT     folder that holds the version folder: the .hal files are ROOT/1.0/*.hal
# DEPENDS  targets of other packages that the .hal files import
#
# The generated code is written into the build tree, never committed, never linted and compiled
# without warnings. It is generated again only when a .hal file changes.
find_program(HIDL_GEN hidl-gen REQUIRED)
set(HIDL_HOST_DIR ${CMAKE_CURRENT_LIST_DIR}/../host/hidl)
get_filename_component(HIDL_HOST_DIR ${HIDL_HOST_DIR} ABSOLUTE)
set(HIDL_BASE_ROOT_ARGUMENT android.hidl:${HIDL_HOST_DIR}/interfaces/android/hidl)

# Generated code is long, and a call spends little of its time in it. So it is compiled with less
# optimisation than the rest, and with sanitizers without debug information: a call costs the same,
# and the compiler takes half the time, with sanitizers a quarter. These options come after those of
# the build type. The sanitizers stay on: the stubs read what untrusted clients send.
set(HIDL_GENERATED_OPTIONS -w -include ${HIDL_HOST_DIR}/hidl/ForcedFatal.h)
if(QORTV_SANITIZE)
    list(APPEND HIDL_GENERATED_OPTIONS -O0 -g0)
else()
    list(APPEND HIDL_GENERATED_OPTIONS $<$<CONFIG:Release>:-O1>)
endif()

# hidl_generate(OUT_VARIABLE OUT_DIR PACKAGE ROOT ROOT_ARGUMENTS...)
#
# Adds the command that generates PACKAGE below OUT_DIR, sets the compile options of the generated
# sources and stores the list of all generated files in OUT_VARIABLE.
function(hidl_generate out_variable out_dir package root)
    string(REGEX MATCH "^(.*)@([0-9.]+)$" _ ${package})
    set(version ${CMAKE_MATCH_2})
    string(REPLACE . / path ${CMAKE_MATCH_1})
    set(path ${out_dir}/${path}/${version})

    file(GLOB hal_files CONFIGURE_DEPENDS ${root}/${version}/*.hal)
    if(NOT hal_files)
        message(FATAL_ERROR "hidl_generate: no .hal files in ${root}/${version}")
    endif()
    set(headers)
    set(sources)
    foreach(hal_file IN LISTS hal_files)
        get_filename_component(name ${hal_file} NAME_WE)
        if(name STREQUAL types)
            list(APPEND headers ${path}/types.h ${path}/hwtypes.h)
            list(APPEND sources ${path}/types.cpp)
        else()
            string(REGEX REPLACE "^I" "" name ${name})
            list(APPEND headers ${path}/I${name}.h ${path}/IHw${name}.h ${path}/BnHw${name}.h
                 ${path}/BpHw${name}.h ${path}/Bs${name}.h)
            list(APPEND sources ${path}/${name}All.cpp)
        endif()
    endforeach()

    set(roots)
    foreach(argument IN LISTS ARGN)
        list(APPEND roots -r ${argument})
    endforeach()
    # clang does not take an explicit specialisation of a constexpr variable for inline: two sources
    # that include the header with an enumeration's values would not link.
    add_custom_command(
        OUTPUT ${headers} ${sources}
        COMMAND ${HIDL_GEN} -o ${out_dir} -L c++-headers ${roots} ${package}
        COMMAND ${HIDL_GEN} -o ${out_dir} -L c++-sources ${roots} ${package}
        COMMAND sed -i "s/^template<> constexpr std::array/template<> inline constexpr std::array/"
                ${headers}
        DEPENDS ${hal_files}
        COMMENT "Generating ${package}"
        VERBATIM)
    set_source_files_properties(${sources} PROPERTIES
        COMPILE_OPTIONS "${HIDL_GENERATED_OPTIONS}"
        COMPILE_DEFINITIONS SCHED_NORMAL=SCHED_OTHER
        OBJECT_DEPENDS ${HIDL_HOST_DIR}/hidl/ForcedFatal.h)
    qortv_generated(${package} ${headers} ${sources})
    set(${out_variable} ${headers} ${sources} PARENT_SCOPE)
endfunction()

function(hidl_add_package target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PACKAGE;ROOT" "DEPENDS")
    if(NOT arg_PACKAGE OR NOT arg_ROOT OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "hidl_add_package(TARGET PACKAGE name@1.0 ROOT folder [DEPENDS ...])")
    endif()
    get_filename_component(root ${arg_ROOT} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_SOURCE_DIR})
    string(REGEX REPLACE "@.*" "" name ${arg_PACKAGE})
    set(roots ${name}:${root})
    foreach(dependency IN LISTS arg_DEPENDS)
        get_target_property(dependency_roots ${dependency} HIDL_ROOTS)
        list(APPEND roots ${dependency_roots})
    endforeach()
    list(REMOVE_DUPLICATES roots)

    set(out_dir ${CMAKE_CURRENT_BINARY_DIR}/${target})
    hidl_generate(files ${out_dir} ${arg_PACKAGE} ${root} ${HIDL_BASE_ROOT_ARGUMENT} ${roots})
    add_library(${target} STATIC ${files})
    set_target_properties(${target} PROPERTIES HIDL_ROOTS "${roots}")
    target_include_directories(${target} SYSTEM PUBLIC ${out_dir})
    target_link_libraries(${target} PUBLIC hidl_runtime ${arg_DEPENDS})
endfunction()
