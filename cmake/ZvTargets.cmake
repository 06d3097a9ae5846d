# Functions that create the project's own targets. Only these targets get warnings, sanitizers and coverage.

add_library(zv_build_options INTERFACE)
# Qt's keyword "signals" is the name of a field in glib.
target_compile_definitions(zv_build_options INTERFACE QT_NO_KEYWORDS)
target_compile_options(zv_build_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion>
    $<$<CXX_COMPILER_ID:MSVC>:/W4>)
if(ZV_WARNINGS_AS_ERRORS)
    target_compile_options(zv_build_options INTERFACE
        $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
if(ZV_PRECOMPILED_HEADERS)
    # A precompiled header and the sources that use it need the same settings. Debian 13's glib sets the first one for
    # its users. CMake compiles libraries with the second one and programs with -fPIE, which clang 19 distinguishes.
    target_compile_options(zv_build_options INTERFACE -pthread -fPIC)
endif()
if(ZV_SANITIZE)
    target_compile_options(zv_build_options INTERFACE
        -fsanitize=${ZV_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer
        # gcc reports uninitialized values in the code that the sanitizers add.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(zv_build_options INTERFACE -fsanitize=${ZV_SANITIZE})
    add_library(zv_keeplibraries OBJECT ${PROJECT_SOURCE_DIR}/cmake/keeplibraries.cpp)
    set_target_properties(zv_keeplibraries PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
endif()
if(ZV_COVERAGE)
    target_compile_options(zv_build_options INTERFACE --coverage -O0)
    target_link_options(zv_build_options INTERFACE --coverage)
endif()

# Released programs are hardened: checked buffer sizes in library calls, protected stacks and branches, address space
# randomization, and relocation tables that are read-only before the program starts. scripts/package checks the result.
# Sanitizers detect more than the first two, and are not compatible with them. The Debian package has the build type
# None, for which Debian sets most flags. Only the flags that some releases of Debian do not set are added here.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT ZV_SANITIZE)
    set(released $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    target_compile_options(zv_build_options INTERFACE
        "$<${released}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3;-fstack-protector-strong>")
    include(CheckCXXCompilerFlag)
    foreach(flag -fstack-clash-protection -fcf-protection) # not supported on every processor
        string(MAKE_C_IDENTIFIER "ZV_HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has})
            target_compile_options(zv_build_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:${flag}>)
        endif()
    endforeach()
    target_link_options(zv_build_options INTERFACE $<${released}:LINKER:-z,relro,-z,now,-z,noexecstack>)
endif()

# Headers that most sources include, compiled once for all targets; a source still includes what it uses. gcc would
# compile them once for each set of definitions. Qt6::Test is not linked, because it defines a macro with the folder of
# each test.
if(ZV_PRECOMPILED_HEADERS)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    add_library(zv_precompiled OBJECT ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
    set_target_properties(zv_precompiled PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_include_directories(zv_precompiled SYSTEM PRIVATE $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>)
    target_link_libraries(zv_precompiled PRIVATE zv_build_options Qt6::Widgets)
    target_precompile_headers(zv_precompiled PRIVATE ${PROJECT_SOURCE_DIR}/cmake/precompiled.h)
endif()

# zv_options(<target>): sets the options that all of the project's own targets have.
function(zv_options target)
    target_link_libraries(${target} PRIVATE zv_build_options)
    if(ZV_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} REUSE_FROM zv_precompiled)
    endif()
endfunction()

# zv_library(<name> <source>...): a static library from one of the project's folders; #include "<folder>/<file>.h".
function(zv_library name)
    add_library(${name} STATIC ${ARGN})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    zv_options(${name})
endfunction()

# zv_program(<name> <source>...): an executable.
function(zv_program name)
    add_executable(${name} ${ARGN})
    zv_options(${name})
    if(ZV_SANITIZE)
        target_link_libraries(${name} PRIVATE zv_keeplibraries)
    endif()
endfunction()

# zv_plugin(<name> <folder> <source>...): creates a generic Qt plugin in a folder of the build.
function(zv_plugin name folder)
    add_library(${name} MODULE ${ARGN})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${folder}/generic)
    zv_options(${name})
endfunction()
