# How the project's own targets are made: warnings, sanitizers and coverage hang on them and on nothing else.

add_library(zv_build_options INTERFACE)
target_compile_options(zv_build_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion>
    $<$<CXX_COMPILER_ID:MSVC>:/W4>)
if(ZV_WARNINGS_AS_ERRORS)
    target_compile_options(zv_build_options INTERFACE
        $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
if(ZV_SANITIZE)
    target_compile_options(zv_build_options INTERFACE
        -fsanitize=${ZV_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer
        # gcc sees uninitialized values in what the sanitizers add.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(zv_build_options INTERFACE -fsanitize=${ZV_SANITIZE})
endif()
if(ZV_COVERAGE)
    target_compile_options(zv_build_options INTERFACE --coverage -O0)
    target_link_options(zv_build_options INTERFACE --coverage)
endif()

# What users get is hardened: library calls that know their buffers' sizes, guarded stacks and branches, a place in memory
# that can't be guessed, tables that are read-only before the program starts. scripts/package checks the result.
# Sanitizers see more than the first two, and don't go with them. Debian's package is built as type None: most flags are
# Debian's own then, and only those that not every release has are added.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang" AND NOT ZV_SANITIZE)
    set(released $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    target_compile_options(zv_build_options INTERFACE
        "$<${released}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3;-fstack-protector-strong>")
    include(CheckCXXCompilerFlag)
    foreach(flag -fstack-clash-protection -fcf-protection) # not for every processor
        string(MAKE_C_IDENTIFIER "ZV_HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has})
            target_compile_options(zv_build_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:${flag}>)
        endif()
    endforeach()
    target_link_options(zv_build_options INTERFACE $<${released}:LINKER:-z,relro,-z,now,-z,noexecstack>)
endif()

# zv_library(<name> <source>...): one of the project's rooms as a static library; #include "<room>/<file>.h".
function(zv_library name)
    add_library(${name} STATIC ${ARGN})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE zv_build_options)
endfunction()

# zv_program(<name> <source>...)
function(zv_program name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE zv_build_options)
endfunction()
