# Packages that others keep, named as Debian names them where one is missing.

# find_package for a package that must be there.
macro(scan695_require name debian_package)
    find_package(${name} QUIET)
    if(NOT ${name}_FOUND)
        message(FATAL_ERROR "${name} is missing: install Debian's ${debian_package} or its like")
    endif()
endmacro()

# The same for one that consists of headers in a directory of their own. A cross compiler takes them
# from this machine through a link, since its own headers must not meet those beside them.
function(scan695_require_headers name target directory debian_package)
    if(NOT CMAKE_CROSSCOMPILING)
        scan695_require(${name} ${debian_package})
        set_target_properties(${target} PROPERTIES IMPORTED_GLOBAL ON)
        return()
    endif()
    find_path(${name}_PATH ${directory} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
    if(NOT ${name}_PATH)
        message(FATAL_ERROR "${name} is missing: install Debian's ${debian_package} or its like")
    endif()
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
    file(CREATE_LINK ${${name}_PATH}/${directory} ${PROJECT_BINARY_DIR}/headers/${directory}
        SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/headers)
endfunction()
