# The platform's user-space libraries as Debian packages them: headers and libraries lie in
# `android` subfolders, so both the include path and the run path have to name them.
#   android::log android::utils android::cutils android::base
find_path(ANDROID_INCLUDE_DIR utils/RefBase.h PATH_SUFFIXES android REQUIRED)
foreach(_name log utils cutils base)
    find_library(ANDROID_${_name}_LIBRARY ${_name} PATH_SUFFIXES android REQUIRED)
    add_library(android::${_name} UNKNOWN IMPORTED)
    set_target_properties(android::${_name} PROPERTIES
        IMPORTED_LOCATION ${ANDROID_${_name}_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${ANDROID_INCLUDE_DIR})
endforeach()
get_filename_component(_android_library_dir ${ANDROID_log_LIBRARY} DIRECTORY)
list(APPEND CMAKE_BUILD_RPATH ${_android_library_dir})
list(APPEND CMAKE_INSTALL_RPATH ${_android_library_dir})
